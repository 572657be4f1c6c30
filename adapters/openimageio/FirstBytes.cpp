#include "adapters/openimageio/FirstBytes.h"

#include <zlib.h>

#include <array>
#include <filesystem>
#include <fstream>

namespace tzoiio {
namespace {

// Comments, licences and document types of real drawings come before the root; entities of Illustrator's take
// a few kilobytes.
constexpr size_t kFirstBytes = size_t{1} << 16U;

std::string unpacked(std::string_view packed) {
    std::string out(kFirstBytes, '\0');
    z_stream stream{};
    constexpr int kGzipOnly = 16 + MAX_WBITS;
    if (inflateInit2(&stream, kGzipOnly) != Z_OK) return {};
    // zlib's interface takes no pointer to const; it does not write there.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    inflate(&stream, Z_SYNC_FLUSH);
    out.resize(out.size() - stream.avail_out);
    inflateEnd(&stream);
    return out;
}

// UTF-16 as the ASCII it holds: enough to find a tag.
std::string narrowed(std::string_view text) {
    if (text.size() < 2) return std::string(text);
    const bool isLittle = text.substr(0, 2) == "\xFF\xFE";
    if (!isLittle && text.substr(0, 2) != "\xFE\xFF") return std::string(text);
    std::string narrow;
    for (size_t i = 2; i + 1 < text.size(); i += 2) narrow += text[isLittle ? i : i + 1];
    return narrow;
}

void skipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

// Past what stands between two marks; to the end when the second is missing.
void skipPast(std::string_view& text, std::string_view end) {
    const size_t found = text.find(end);
    text.remove_prefix(found == std::string_view::npos ? text.size() : found + end.size());
}

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

void skipDocumentType(std::string_view& text) {
    const size_t end = text.find('>');
    const size_t subset = text.find('[');
    if (subset < end) skipPast(text, "]");
    skipPast(text, ">");
}

// The name of the first element, without its prefix.
std::string_view rootName(std::string_view text) {
    if (startsWith(text, "\xEF\xBB\xBF")) text.remove_prefix(3);
    for (skipBlanks(text); !text.empty(); skipBlanks(text)) {
        if (startsWith(text, "<?")) {
            skipPast(text, "?>");
        } else if (startsWith(text, "<!--")) {
            skipPast(text, "-->");
        } else if (startsWith(text, "<!DOCTYPE")) {
            skipDocumentType(text);
        } else {
            break;
        }
    }
    if (text.empty() || text.front() != '<') return {};
    text.remove_prefix(1);
    const std::string_view name = text.substr(0, text.find_first_of(" \t\r\n/>"));
    const size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

}  // namespace

std::string readFirstBytes(const std::string& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return {};
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(kFirstBytes, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(stream.gcount()));
    return bytes;
}

bool looksLikeSvg(std::string_view firstBytes) {
    const bool isPacked = startsWith(firstBytes, "\x1F\x8B");
    return rootName(narrowed(isPacked ? unpacked(firstBytes) : std::string(firstBytes))) == "svg";
}

}  // namespace tzoiio
