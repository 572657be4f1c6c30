// The format: https://www.w3.org/TR/png-3/
#include "host/pyramid/PngFile.h"

#include <libdeflate.h>

#include <memory>
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
    appendNumber(out, libdeflate_crc32(0, out.data() + begin, out.size() - begin));
}

// Every row comes after the number of its filter: none.
std::string compressedRows(const QImage& rgba) {
    constexpr size_t kBytesPerPixel = 4;
    constexpr int kCompression = 6;  // the usual one; 12 is the most
    const size_t row = static_cast<size_t>(rgba.width()) * kBytesPerPixel;
    std::vector<uchar> rows;
    rows.reserve((row + 1) * static_cast<size_t>(rgba.height()));
    for (int y = 0; y < rgba.height(); ++y) {
        rows.push_back(0);
        rows.insert(rows.end(), rgba.constScanLine(y), rgba.constScanLine(y) + row);
    }
    const std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)> compressor(
        libdeflate_alloc_compressor(kCompression), libdeflate_free_compressor);
    if (!compressor) throw CTzError(kTzOutOfMemory);
    std::string compressed(libdeflate_zlib_compress_bound(compressor.get(), rows.size()), '\0');
    compressed.resize(libdeflate_zlib_compress(compressor.get(), rows.data(), rows.size(), compressed.data(),
                                               compressed.size()));
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
