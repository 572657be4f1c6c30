// The format: https://www.w3.org/TR/png-3/
#include "host/pyramid/PngFile.h"

#include <zlib.h>

#include <string_view>
#include <vector>

#include "hostsdk/CTzError.h"

namespace tzhost {
namespace {

void appendNumber(std::string& out, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out += static_cast<char>(value >> shift);
}

void appendChunk(std::string& out, std::string_view type, std::string_view content) {
    appendNumber(out, static_cast<uint32_t>(content.size()));
    const size_t begin = out.size();
    out.append(type).append(content);
    const auto* const bytes = reinterpret_cast<const Bytef*>(out.data() + begin);
    appendNumber(out, static_cast<uint32_t>(crc32_z(0, bytes, out.size() - begin)));
}

// Every row comes after the number of its filter: none.
std::string compressedRows(const QImage& rgba) {
    constexpr uLong kBytesPerPixel = 4;
    const uLong row = static_cast<uLong>(rgba.width()) * kBytesPerPixel;
    std::vector<Bytef> rows;
    rows.reserve((row + 1) * static_cast<uLong>(rgba.height()));
    for (int y = 0; y < rgba.height(); ++y) {
        rows.push_back(0);
        rows.insert(rows.end(), rgba.constScanLine(y), rgba.constScanLine(y) + row);
    }
    uLong size = compressBound(rows.size());
    std::string compressed(size, '\0');
    if (compress(reinterpret_cast<Bytef*>(compressed.data()), &size, rows.data(), rows.size()) != Z_OK)
        throw CTzError(kTzOutOfMemory);
    compressed.resize(size);
    return compressed;
}

}  // namespace

std::string pngBytes(const QImage& picture) {
    const QImage rgba = picture.convertToFormat(QImage::Format_RGBA8888);
    if (rgba.isNull()) throw CTzError(kTzOutOfMemory);
    std::string out = "\x89PNG\r\n\x1a\n";
    std::string header;
    appendNumber(header, static_cast<uint32_t>(rgba.width()));
    appendNumber(header, static_cast<uint32_t>(rgba.height()));
    header +=
        {8, 6, 0, 0, 0};  // bits, red green blue alpha, and the only ways to compress, filter, interlace
    appendChunk(out, "IHDR", header);
    appendChunk(out, "IDAT", compressedRows(rgba));
    appendChunk(out, "IEND", {});
    return out;
}

}  // namespace tzhost
