// Fuzz target: transform lists. What is refused leaves the identity.
#include <QTransform>
#include <cstdlib>

#include "fuzz/FuzzHost.h"
#include "svg/text/TransformList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text = tzfuzz::asText(data, size);
    QTransform transform;
    const bool accepted =
        tzsvg::parseTransformList(QString::fromUtf8(text.data(), static_cast<int>(text.size())), transform);
    if (!accepted && !transform.isIdentity()) std::abort();
    return 0;
}
