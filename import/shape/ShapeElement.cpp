// See the header.
#include "import/shape/ShapeElement.h"

#include <array>

namespace tzsvg {
namespace {

constexpr size_t kAttributeCount = static_cast<size_t>(Attribute::kClipPath) + 1;
static_assert(kAttributeCount <= 32, "a bit for each");

}  // namespace

const QString& nameOf(Attribute attribute) {
    static const std::array<QString, kAttributeCount> kNames = {
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
    };
    return kNames[static_cast<size_t>(attribute)];
}

bool ShapeElement::has(Attribute attribute) const {
    if ((found_ & bitOf(attribute)) != 0) return true;
    if (notFound_ == 0 || !element_.hasAttribute(nameOf(attribute))) return false;
    noteFound(attribute);
    return true;
}

QString ShapeElement::lookUp(Attribute attribute) const {
    QString value = element_.attribute(nameOf(attribute));
    if (!value.isNull()) noteFound(attribute);
    return value;
}

void ShapeElement::noteFound(Attribute attribute) const {
    if ((found_ & bitOf(attribute)) == 0) --notFound_;
    found_ |= bitOf(attribute);
}

}  // namespace tzsvg
