// See the header.
#include "normalize/paint/Paint.h"

#include "normalize/convert/Conversion.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/paint/Gradients.h"
#include "normalize/paint/Patterns.h"
#include "normalize/style/Reference.h"

namespace tznormalize {
namespace {

Paint plainPaint(QStringView value, const Place& place) {
    const std::optional<Color> color = readColor(value, place.style.currentColor());
    return color ? Paint{colorText(*color), color->opacity} : Paint();
}

std::optional<Paint> referredPaint(Conversion& conversion, QStringView id, const Place& place,
                                   const PlacedPaths& shape) {
    const SourceElement* const element = conversion.source.byId(id);
    if (!element) return std::nullopt;
    switch (element->tag()) {
        case Tag::kLinearGradient:
        case Tag::kRadialGradient:
            return gradientPaint(conversion, *element, place, shape);
        case Tag::kPattern:
            return patternPaint(conversion, *element, place, shape);
        default:
            return std::nullopt;
    }
}

}  // namespace

Paint resolvePaint(Conversion& conversion, QStringView value, const Place& place, const PlacedPaths& shape) {
    if (value == u"none") return Paint();
    const Reference reference = readReference(value);
    if (!reference.isUrl) return plainPaint(value, place);
    if (std::optional<Paint> paint = referredPaint(conversion, reference.id, place, shape)) return *paint;
    return plainPaint(reference.fallback, place);  // none for "" and "none"
}

}  // namespace tznormalize
