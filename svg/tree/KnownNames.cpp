#include "svg/tree/KnownNames.h"

#include <algorithm>
#include <array>

namespace tzsvg {
namespace {

// By code; kOther has an empty one.
const std::array kElements = {
    QString(),
    QStringLiteral("svg"),
    QStringLiteral("switch"),
    QStringLiteral("g"),
    QStringLiteral("defs"),
    QStringLiteral("pattern"),
    QStringLiteral("linearGradient"),
    QStringLiteral("radialGradient"),
    QStringLiteral("clipPath"),
    QStringLiteral("i:pgf"),
    QStringLiteral("circle"),
    QStringLiteral("ellipse"),
    QStringLiteral("line"),
    QStringLiteral("path"),
    QStringLiteral("polygon"),
    QStringLiteral("polyline"),
    QStringLiteral("rect"),
};
static_assert(kElements.size() == static_cast<size_t>(Element::kRect) + 1, "a name for each");

const std::array kAttributes = {
    QStringLiteral("x"),
    QStringLiteral("y"),
    QStringLiteral("width"),
    QStringLiteral("height"),
    QStringLiteral("rx"),
    QStringLiteral("ry"),
    QStringLiteral("cx"),
    QStringLiteral("cy"),
    QStringLiteral("r"),
    QStringLiteral("x1"),
    QStringLiteral("y1"),
    QStringLiteral("x2"),
    QStringLiteral("y2"),
    QStringLiteral("points"),
    QStringLiteral("d"),
    QStringLiteral("transform"),
    QStringLiteral("id"),
    QStringLiteral("style"),
    QStringLiteral("fill"),
    QStringLiteral("fill-opacity"),
    QStringLiteral("fill-rule"),
    QStringLiteral("opacity"),
    QStringLiteral("stroke-width"),
    QStringLiteral("stroke"),
    QStringLiteral("stroke-opacity"),
    QStringLiteral("stroke-dasharray"),
    QStringLiteral("stroke-dashoffset"),
    QStringLiteral("stroke-linecap"),
    QStringLiteral("stroke-linejoin"),
    QStringLiteral("stroke-miterlimit"),
    QStringLiteral("clip-path"),
    QStringLiteral("viewBox"),
};
static_assert(kAttributes.size() == kAttributeCount, "a name for each");

}  // namespace

Element elementNamed(QStringView name) {
    const auto* const found = std::find(kElements.begin() + 1, kElements.end(), name);
    return found == kElements.end() ? Element::kOther : static_cast<Element>(found - kElements.begin());
}

Attribute attributeNamed(QStringView name) {
    return static_cast<Attribute>(std::find(kAttributes.begin(), kAttributes.end(), name) -
                                  kAttributes.begin());
}

const QString& nameOf(Element element) {
    return kElements[static_cast<size_t>(element)];
}

const QString& nameOf(Attribute attribute) {
    return kAttributes[static_cast<size_t>(attribute)];
}

}  // namespace tzsvg
