#include "normalize/paint/Gradients.h"

#include <algorithm>

#include "normalize/convert/Conversion.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/paint/ReferenceChain.h"
#include "normalize/text/NumberCursor.h"
#include "normalize/text/Transform.h"

namespace tznormalize {
namespace {

constexpr int kDigits = 9;

struct Stop {
    double offset;
    std::string color;
    double opacity;
};

std::vector<Stop> readStops(const Conversion& conversion, const ReferenceChain& chain) {
    std::vector<Stop> stops;
    const SourceElement* const holder = chain.firstWithChild(Tag::kStop);
    if (!holder) return stops;
    const Style parent = conversion.styles.computedFromRoot(*holder);
    double last = 0.0;
    for (const SourceElement* child = holder->firstChild(); child; child = child->nextSibling()) {
        if (child->tag() != Tag::kStop) continue;
        const Style style = conversion.styles.computed(*child, parent, Viewport{1.0, 1.0});
        const Color color = readColor(style[Property::kStopColor], style.currentColor()).value_or(Color{});
        const double offset = readShare(child->attribute(Name::kOffset)).value_or(0.0);
        last = std::max(last, std::clamp(offset, 0.0, 1.0));
        stops.push_back({last, colorText(color), color.opacity * readOpacity(style[Property::kStopOpacity])});
    }
    return stops;
}

Paint plain(const Stop& stop) {
    return {stop.color, stop.opacity};
}

// An attribute of the gradient's shape: where it runs.
struct Extent {
    Name name;
    const char* text;
    Axis axis;
    double initialShare;  // of the viewport or box; below 0: not written when absent
};

constexpr Extent kLinear[] = {{Name::kX1, "x1", Axis::kHorizontal, 0.0},
                              {Name::kY1, "y1", Axis::kVertical, 0.0},
                              {Name::kX2, "x2", Axis::kHorizontal, 1.0},
                              {Name::kY2, "y2", Axis::kVertical, 0.0}};
constexpr Extent kRadial[] = {
    {Name::kCx, "cx", Axis::kHorizontal, 0.5}, {Name::kCy, "cy", Axis::kVertical, 0.5},
    {Name::kR, "r", Axis::kNeither, 0.5},      {Name::kFx, "fx", Axis::kHorizontal, -1.0},
    {Name::kFy, "fy", Axis::kVertical, -1.0},  {Name::kFr, "fr", Axis::kNeither, -1.0}};

// Sets the extent on `out`; false where it is a point, of which nothing but the last colour is seen.
bool setExtent(OutputElement& out, const ReferenceChain& chain, bool isLinear, const Viewport& space,
               double fontSize) {
    double values[6] = {};
    const Extent* const extents = isLinear ? kLinear : kRadial;
    const size_t count = isLinear ? std::size(kLinear) : std::size(kRadial);
    const Tag kind = isLinear ? Tag::kLinearGradient : Tag::kRadialGradient;
    for (size_t i = 0; i < count; ++i) {
        const Extent& one = extents[i];
        const std::optional<double> value =
            readLength(chain.attribute(one.name, kind), one.axis, space, fontSize);
        if (!value && one.initialShare < 0.0) continue;
        values[i] = value ? *value : one.initialShare * space.extent(one.axis);
        out.set(one.text, shortNumber(values[i], kDigits));
    }
    return isLinear ? values[0] != values[2] || values[1] != values[3] : values[2] > 0.0;
}

void addStop(OutputElement& gradient, const Stop& one) {
    OutputElement& stop = gradient.append(OutputElement("stop"));
    stop.set("offset", shortNumber(one.offset));
    stop.set("stop-color", one.color);
    if (one.opacity < 1.0) stop.set("stop-opacity", shortNumber(one.opacity));
}

}  // namespace

std::optional<Paint> gradientPaint(Conversion& conversion, const SourceElement& gradient, const Place& place,
                                   const PlacedPaths& shape) {
    const ReferenceChain chain(conversion.source, gradient, {Tag::kLinearGradient, Tag::kRadialGradient});
    Matrix base = place.ctm;
    Viewport space = place.viewport;
    if (chain.attribute(Name::kGradientUnits) != u"userSpaceOnUse") {
        const std::optional<Box> box = shape.boxIn(place.ctm);
        if (!box || !box->hasArea()) return std::nullopt;
        base = base * box->fromUnit();
        space = {1.0, 1.0};
    }
    base = base * readTransform(chain.attribute(Name::kGradientTransform)).value_or(Matrix());

    const DefinitionKey key =
        DefinitionKey("gradient", gradient).add(base).add(space.width).add(space.height);
    if (const std::string* const known = conversion.definitions.known(key.text())) return Paint{*known, 1.0};

    const std::vector<Stop> stops = readStops(conversion, chain);
    if (stops.empty()) return Paint();
    if (stops.size() == 1 || base.isFlat()) return plain(stops.back());
    const bool isLinear = gradient.tag() == Tag::kLinearGradient;
    OutputElement out(isLinear ? "linearGradient" : "radialGradient");
    if (!setExtent(out, chain, isLinear, space, place.style.fontSize())) return plain(stops.back());
    out.set("gradientUnits", "userSpaceOnUse");
    if (!base.isIdentity()) out.set("gradientTransform", matrixText(base));
    const QStringView spread = chain.attribute(Name::kSpreadMethod);
    if (spread == u"reflect" || spread == u"repeat") out.set("spreadMethod", spread.toString().toStdString());
    for (const Stop& stop : stops) addStop(out, stop);

    std::string id = conversion.definitions.freshName("paint", &gradient);
    const std::string url = urlTo(id);
    out.set("id", std::move(id));
    conversion.budget.spendText(out.textSize());
    conversion.definitions.define(std::move(out));
    conversion.definitions.remember(key.text(), url);
    return Paint{url, 1.0};
}

}  // namespace tznormalize
