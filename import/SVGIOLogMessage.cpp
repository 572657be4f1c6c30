// See the header. Called by the walk.
#include "import/SVGIOLogMessage.h"

#include <cstdarg>
#include <cstdio>

namespace tzsvg {
namespace {

// The length of the text's longest beginning of whole UTF-8 characters, when the text was cut off at `size`.
size_t wholeCharacters(const char* text, size_t size) {
    size_t start = size;
    while (start > 0 && size - start < 4) {
        const auto byte = static_cast<unsigned char>(text[--start]);
        if (byte < 0x80) return size;
        if (byte >= 0xC0) {
            const size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
            return start + length <= size ? size : start;
        }
    }
    return size;
}

}  // namespace

void SVGIOLogMessage::addFormattedLine(const char* format, ...) {
    char buffer[1024];
    va_list arguments;
    va_start(arguments, format);
    const int formatted = std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    if (formatted < 0) throw CTzError(kTzFailed);
    const auto size = static_cast<size_t>(formatted);
    const size_t kept = size < sizeof buffer ? size : wholeCharacters(buffer, sizeof buffer - 1);
    addLine({buffer, kept});
}

}  // namespace tzsvg
