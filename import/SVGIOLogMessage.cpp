#include "import/SVGIOLogMessage.h"

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

std::string formatNodeLine(const QString& name, int lineNumber) {
    char buffer[1024];
    const int formatted = std::snprintf(buffer, sizeof buffer, "Parsing node of type %s, line number %d.\n",
                                        name.toUtf8().constData(), lineNumber);
    if (formatted < 0) throw CTzError(kTzFailed);
    const auto size = static_cast<size_t>(formatted);
    return {buffer, size < sizeof buffer ? size : wholeCharacters(buffer, sizeof buffer - 1)};
}

}  // namespace

void SVGIOLogMessage::addNodeLine(const QString& name, int lineNumber) {
    if (nodeLine_.empty() || name != nodeName_ || lineNumber != nodeLineNumber_) {
        nodeLine_ = formatNodeLine(name, lineNumber);
        nodeName_ = name;
        nodeLineNumber_ = lineNumber;
    }
    addLine(nodeLine_);
}

}  // namespace tzsvg
