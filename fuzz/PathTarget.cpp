// Fuzz target: path data. What is accepted has finite coordinates only, and no more elements than text calls
// for.
#include <QPainterPath>
#include <cmath>
#include <cstdlib>

#include "fuzz/FuzzHost.h"
#include "svg/text/PathData.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text = tzfuzz::asText(data, size);
    QPainterPath path;
    tzsvg::parsePathData(QString::fromUtf8(text.data(), static_cast<int>(text.size())), path);
    // An arc, the most fertile command, takes at least ten characters for its four cubics.
    constexpr size_t kMostPerCharacter = 4;
    if (static_cast<size_t>(path.elementCount()) > kMostPerCharacter * (size + 1)) std::abort();
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (!std::isfinite(element.x) || !std::isfinite(element.y)) std::abort();
    }
    return 0;
}
