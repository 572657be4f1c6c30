// See the header.
#include "normalize/paint/Markers.h"

#include <algorithm>
#include <cmath>

#include "normalize/convert/Content.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/style/Reference.h"
#include "normalize/text/NumberCursor.h"
#include "normalize/text/ViewBox.h"

namespace tznormalize {
namespace {

struct Position {
    Property property;
    const char* name;
};
constexpr Position kPositions[] = {{Property::kMarkerStart, "marker-start"},
                                   {Property::kMarkerMid, "marker-mid"},
                                   {Property::kMarkerEnd, "marker-end"}};

constexpr double kDegrees = 180.0 / 3.14159265358979323846;

bool takesMarkers(Tag tag) {
    return tag == Tag::kPath || tag == Tag::kLine || tag == Tag::kPolyline || tag == Tag::kPolygon;
}

// The value of "orient" on the page: a fixed angle turns with the shape.
std::string orientOnPage(QStringView orient, const Matrix& ctm) {
    if (orient == u"auto" || orient == u"auto-start-reverse") return orient.toString().toStdString();
    NumberCursor cursor(orient);
    double angle = 0.0;
    cursor.skipBlanks();
    cursor.readNumber(angle);
    if (cursor.rest() == u"rad") angle *= kDegrees;
    if (cursor.rest() == u"grad") angle *= 0.9;
    const double turn = std::atan2(ctm.b, ctm.a) * kDegrees;
    return shortNumber(ctm.determinant() < 0.0 ? turn - angle : turn + angle);
}

std::string boxText(double x, double y, double width, double height) {
    return shortNumber(x) + ' ' + shortNumber(y) + ' ' + shortNumber(width) + ' ' + shortNumber(height);
}

// A marker's measures in its own units, as the source gives them.
struct Measures {
    double width, height;  // of its viewport
    ViewBox space;         // of its content
    Point reference;
};

std::optional<Measures> readMeasures(const SourceElement& marker, const Place& place) {
    const double fontSize = place.style.fontSize();
    const auto length = [&](Name name, Axis axis, const Viewport& viewport, double other) {
        return readLength(marker.attribute(name), axis, viewport, fontSize).value_or(other);
    };
    Measures out = {};
    out.width = length(Name::kMarkerWidth, Axis::kHorizontal, place.viewport, 3.0);
    out.height = length(Name::kMarkerHeight, Axis::kVertical, place.viewport, 3.0);
    if (!(out.width > 0.0 && out.height > 0.0)) return std::nullopt;
    out.space =
        readViewBox(marker.attribute(Name::kViewBox)).value_or(ViewBox{0.0, 0.0, out.width, out.height});
    const Viewport space = {out.space.width, out.space.height};
    out.reference = {length(Name::kRefX, Axis::kHorizontal, space, 0.0),
                     length(Name::kRefY, Axis::kVertical, space, 0.0)};
    return out;
}

std::string writeMarker(Conversion& conversion, const SourceElement& marker, const Measures& measures,
                        double scale, bool isMirrored, std::string orient) {
    const double width = measures.width * scale;
    const double height = measures.height * scale;
    const ViewBox& space = measures.space;
    // Content in the page's units, so that it is written as finely as the page. What is nearly 1 is 1, for
    // normalized input.
    double growth = std::max(width / space.width, height / space.height);
    if (std::abs(growth - 1.0) < 1e-6) growth = 1.0;
    const double flip = isMirrored ? -growth : growth;

    const Style style = conversion.styles.computedFromRoot(marker);
    std::string id = conversion.definitions.freshName("marker", &marker);
    Content content = convertContent(conversion, marker, Matrix::scaling(growth, flip), style,
                                     {space.width, space.height}, ContentKind::kDrawing);
    if (content.isEmpty()) return {};
    const double top = std::min(space.y * flip, (space.y + space.height) * flip) - content.lift;

    OutputElement out("marker");
    std::string url = urlTo(id);
    out.set("id", std::move(id));
    out.set("markerUnits", "userSpaceOnUse");
    out.set("markerWidth", shortNumber(width));
    out.set("markerHeight", shortNumber(height));
    out.set("refX", shortNumber(measures.reference.x * growth));
    out.set("refY", shortNumber(measures.reference.y * flip - content.lift));
    out.set("orient", std::move(orient));
    out.set("viewBox", boxText(space.x * growth, top, space.width * growth, space.height * growth));
    const QStringView aspect = marker.attribute(Name::kPreserveAspectRatio);
    if (!aspect.isEmpty()) out.set("preserveAspectRatio", aspect.toString().toStdString());
    const QStringView overflow = style[Property::kOverflow];
    if (overflow == u"visible" || overflow == u"auto") out.set("overflow", "visible");
    out.takeChildren(content.holder);
    conversion.definitions.define(std::move(out));
    return url;
}

// The value of the attribute; empty when the marker draws nothing.
std::string markerUrl(Conversion& conversion, const SourceElement& marker, const Place& place,
                      double strokeWidth) {
    const bool isByStroke = marker.attribute(Name::kMarkerUnits) != u"userSpaceOnUse";
    const double scale = (isByStroke ? strokeWidth : 1.0) * place.ctm.areaScale();
    if (!(scale > 0.0)) return {};
    const std::optional<Measures> measures = readMeasures(marker, place);
    if (!measures) return {};
    if (!place.ctm.isEven())
        addNote(conversion, NoteCode::kApproximated, marker,
                QStringLiteral("it is no longer stretched with the line"));

    const bool isMirrored = place.ctm.determinant() < 0.0;
    std::string orient = orientOnPage(marker.attribute(Name::kOrient), place.ctm);
    const std::string key =
        DefinitionKey("marker", marker).add(scale).text() + (isMirrored ? " mirrored " : " ") + orient;
    if (const std::string* const known = conversion.definitions.known(key)) return *known;
    std::string url = writeMarker(conversion, marker, *measures, scale, isMirrored, std::move(orient));
    conversion.definitions.remember(key, url);
    return url;
}

const SourceElement* markerAt(const Conversion& conversion, const Place& place, Property property) {
    const QStringView value = place.style[property];
    if (value == u"none" || value.isEmpty()) return nullptr;
    const SourceElement* const marker = conversion.source.byId(readReference(value).id);
    return marker && marker->tag() == Tag::kMarker ? marker : nullptr;
}

}  // namespace

bool hasMarkers(const SourceElement& shape, const Place& place) {
    if (!takesMarkers(shape.tag())) return false;
    return std::any_of(std::begin(kPositions), std::end(kPositions), [&](const Position& one) {
        return place.style[one.property].startsWith(u"url", Qt::CaseInsensitive);
    });
}

std::vector<MarkerAttribute> markerAttributes(Conversion& conversion, const SourceElement& shape,
                                              const Place& place, double strokeWidth) {
    std::vector<MarkerAttribute> out;
    if (!hasMarkers(shape, place)) return out;
    for (const Position& one : kPositions) {
        const SourceElement* const marker = markerAt(conversion, place, one.property);
        if (!marker || !conversion.visited.mayEnter(*marker)) continue;
        std::string url = markerUrl(conversion, *marker, place, strokeWidth);
        if (!url.empty()) out.push_back({one.name, std::move(url)});
    }
    return out;
}

}  // namespace tznormalize
