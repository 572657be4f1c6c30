#include "normalize/convert/Look.h"

#include <algorithm>
#include <numeric>

#include "normalize/text/NumberCursor.h"
#include "svg/guard/DocumentGuard.h"

namespace tznormalize {
namespace {

LineCap capOf(QStringView text) {
    if (text == u"round") return LineCap::kRound;
    return text == u"square" ? LineCap::kSquare : LineCap::kButt;
}

LineJoin joinOf(QStringView text) {
    if (text == u"round") return LineJoin::kRound;
    return text == u"bevel" ? LineJoin::kBevel : LineJoin::kMiter;
}

double lengthOf(const Place& place, Property property, double otherwise) {
    return readLength(place.style[property], Axis::kNeither, place.viewport, place.style.fontSize())
        .value_or(otherwise);
}

StrokeForm strokeFormOf(const Place& place, double width) {
    const Style& style = place.style;
    StrokeForm form;
    form.width = width;
    form.cap = capOf(style[Property::kStrokeLinecap]);
    form.join = joinOf(style[Property::kStrokeLinejoin]);
    form.miterLimit = std::max(readNumber(style[Property::kStrokeMiterlimit]).value_or(4.0), 1.0);
    form.dashes = dashLengths(place);
    if (!form.dashes.empty()) form.dashOffset = lengthOf(place, Property::kStrokeDashoffset, 0.0);
    return form;
}

// "stroke" or "markers stroke": before the fill, that is.
bool isStrokeBeforeFill(QStringView paintOrder) {
    if (paintOrder.startsWith(u"markers")) paintOrder = paintOrder.mid(7).trimmed();
    return paintOrder.startsWith(u"stroke");
}

bool isNone(QStringView paint) {
    constexpr QStringView kNone = u"none";
    return paint == kNone;
}

}  // namespace

std::vector<double> dashLengths(const Place& place) {
    const QStringView text = place.style[Property::kStrokeDasharray];
    if (text.isEmpty() || text == u"none") return {};
    const auto isSeparator = [](QChar c) { return c == u',' || isBlank(c.unicode()); };
    std::vector<double> dashes;
    for (qsizetype at = 0; at < text.size();) {
        qsizetype end = at;
        while (end < text.size() && !isSeparator(text[end])) ++end;
        if (end > at) {
            const std::optional<double> length =
                readLength(text.mid(at, end - at), Axis::kNeither, place.viewport, place.style.fontSize());
            if (!length || *length < 0.0) return {};
            dashes.push_back(*length);
        }
        at = end + 1;
    }
    if (std::accumulate(dashes.begin(), dashes.end(), 0.0) <= 0.0) return {};
    return dashes;
}

bool isHidden(const Style& style) {
    constexpr QStringView kHidden = u"hidden";
    constexpr QStringView kCollapse = u"collapse";
    const QStringView visibility = style[Property::kVisibility];
    return visibility == kHidden || visibility == kCollapse;
}

double strokeWidth(const Conversion& conversion, const Place& place) {
    const double width = lengthOf(place, Property::kStrokeWidth, 1.0);
    const double scale = place.ctm.areaScale();
    if (place.style[Property::kVectorEffect] == u"non-scaling-stroke" && scale > 0.0) {
        return width / scale * conversion.pixel;
    }
    return width;
}

bool mayBeSeen(const Path& path, const Place& place) {
    const Style& style = place.style;
    const bool isFilled = !isNone(style[Property::kFill]) && path.coversArea() &&
                          readOpacity(style[Property::kFillOpacity]) > 0.0;
    return isFilled ||
           (!isNone(style[Property::kStroke]) && readOpacity(style[Property::kStrokeOpacity]) > 0.0 &&
            lengthOf(place, Property::kStrokeWidth, 1.0) > 0.0);
}

Look resolveLook(Conversion& conversion, const Path& path, const Place& place, const PlacedPaths& object) {
    const Style& style = place.style;
    Look look;
    if (!isNone(style[Property::kFill]) && path.coversArea()) {
        look.fillOpacity = readOpacity(style[Property::kFillOpacity]);
        if (look.fillOpacity > 0.0)
            look.fill = resolvePaint(conversion, style[Property::kFill], place, object);
        look.fillOpacity *= look.fill.opacity;
        if (look.fillOpacity <= 0.0) look.fill = {};
        look.isEvenOdd = style[Property::kFillRule] == u"evenodd";
    }
    if (isNone(style[Property::kStroke])) return look;
    const double width = strokeWidth(conversion, place);
    look.strokeOpacity = readOpacity(style[Property::kStrokeOpacity]);
    if (width <= 0.0 || look.strokeOpacity <= 0.0) return look;
    look.stroke = resolvePaint(conversion, style[Property::kStroke], place, object);
    look.strokeOpacity *= look.stroke.opacity;
    if (look.strokeOpacity <= 0.0) look.stroke = {};
    if (look.stroke.isNone()) return look;

    look.form = strokeFormOf(place, width);
    if (!look.form.dashes.empty() && dashCount(path, look.form.dashes) > double(tzsvg::kMaxDashesOfPath)) {
        look.isDashless = true;
        look.form.dashes.clear();
    }
    look.scale = place.ctm.areaScale();
    look.isStrokeFirst = !look.fill.isNone() && isStrokeBeforeFill(style[Property::kPaintOrder]);
    look.isStrokeOutlined = look.stroke.isReference() || !place.ctm.isEven();
    const double corner = look.form.join == LineJoin::kMiter ? std::max(look.form.miterLimit, 1.5) : 1.5;
    look.reach = width * place.ctm.stretches().most / 2.0 * corner;
    return look;
}

}  // namespace tznormalize
