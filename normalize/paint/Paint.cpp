#include "normalize/paint/Paint.h"

#include "normalize/convert/Conversion.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/paint/Gradients.h"
#include "normalize/paint/Patterns.h"
#include "normalize/style/Reference.h"

namespace tznormalize {
namespace {

// The paint that a marker takes from its shape. Its gradients and patterns are laid over the marker's own
// shapes.
Paint contextPaint(Conversion& conversion, Property property, const Place& place, const PlacedPaths& shape) {
    const MarkedShape* const marked = conversion.marked;
    if (!marked) return Paint();
    conversion.marked = marked->outer;
    const Place around = {place.ctm, marked->place.style, marked->place.viewport};
    Paint paint = resolvePaint(conversion, around.style[property], around, shape);
    conversion.marked = marked;
    return paint;
}

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
    if (value == u"context-fill") return contextPaint(conversion, Property::kFill, place, shape);
    if (value == u"context-stroke") return contextPaint(conversion, Property::kStroke, place, shape);
    const Reference reference = readReference(value);
    if (!reference.isUrl) return plainPaint(value, place);
    if (std::optional<Paint> paint = referredPaint(conversion, reference.id, place, shape)) return *paint;
    return plainPaint(reference.fallback, place);  // none for "" and "none"
}

}  // namespace tznormalize
