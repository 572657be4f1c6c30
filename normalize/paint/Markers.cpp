#include "normalize/paint/Markers.h"

#include <algorithm>
#include <iterator>

#include "normalize/convert/Groups.h"
#include "normalize/convert/Walk.h"
#include "normalize/geometry/PathVertices.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/style/Reference.h"
#include "normalize/text/NumberCursor.h"
#include "normalize/text/ViewBox.h"

namespace tznormalize {
namespace {

constexpr Property kPositions[] = {Property::kMarkerStart, Property::kMarkerMid, Property::kMarkerEnd};
constexpr double kDegrees = 180.0 / 3.14159265358979323846;

bool takesMarkers(Tag tag) {
    return tag == Tag::kPath || tag == Tag::kLine || tag == Tag::kPolyline || tag == Tag::kPolygon;
}

const SourceElement* markerAt(const Conversion& conversion, const Place& place, Property property) {
    const QStringView value = place.style[property];
    if (value == u"none" || value.isEmpty()) return nullptr;
    const SourceElement* const marker = conversion.source.byId(readReference(value).id);
    return marker && marker->tag() == Tag::kMarker ? marker : nullptr;
}

double angleAt(const SourceElement& marker, const Vertex& vertex, bool isStart) {
    const QStringView orient = marker.attribute(Name::kOrient);
    if (orient == u"auto") return vertex.direction;
    if (orient == u"auto-start-reverse") return vertex.direction + (isStart ? 180.0 : 0.0);
    NumberCursor cursor(orient);
    double angle = 0.0;
    cursor.skipBlanks();
    cursor.readNumber(angle);
    const QStringView unit = cursor.rest();
    return unit == u"rad"    ? angle * kDegrees
           : unit == u"grad" ? angle * 0.9
           : unit == u"turn" ? angle * 360.0
                             : angle;
}

// A marker's own measures.
struct Measures {
    double width, height;  // of its viewport
    Matrix fit;            // from its content to the viewport
    Viewport inside;
    Point reference;  // in the viewport: what stands on the vertex
};

std::optional<Measures> readMeasures(const SourceElement& marker, const Place& place) {
    const auto length = [&](Name name, Axis axis, const Viewport& viewport, double otherwise) {
        return readLength(marker.attribute(name), axis, viewport, place.style.fontSize()).value_or(otherwise);
    };
    Measures out = {};
    out.width = length(Name::kMarkerWidth, Axis::kHorizontal, place.viewport, 3.0);
    out.height = length(Name::kMarkerHeight, Axis::kVertical, place.viewport, 3.0);
    if (!(out.width > 0.0 && out.height > 0.0)) return std::nullopt;
    out.inside = {out.width, out.height};
    if (const std::optional<ViewBox> box = readViewBox(marker.attribute(Name::kViewBox))) {
        out.fit = fitViewBox(*box, marker.attribute(Name::kPreserveAspectRatio), out.width, out.height);
        out.inside = {box->width, box->height};
    }
    out.reference = out.fit.map({length(Name::kRefX, Axis::kHorizontal, out.inside, 0.0),
                                 length(Name::kRefY, Axis::kVertical, out.inside, 0.0)});
    return out;
}

// One kind of marker on one shape.
class Marker {
  public:
    Marker(Conversion& conversion, const SourceElement& marker, const Place& shape, const Measures& measures,
           double scale)
        : conversion_(conversion),
          marker_(marker),
          shape_(shape),
          measures_(measures),
          scale_(scale),
          style_(conversion.styles.computedFromRoot(marker)) {
        const QStringView overflow = style_[Property::kOverflow];
        isClipped_ = overflow != u"visible" && overflow != u"auto" && reachesOut();
    }

    void draw(const Vertex& vertex, bool isStart, OutputElement& out, Target& target) {
        const Matrix viewport = shape_.ctm * Matrix::translation(vertex.point.x, vertex.point.y) *
                                Matrix::rotation(angleAt(marker_, vertex, isStart)) *
                                Matrix::scaling(scale_, scale_) *
                                Matrix::translation(-measures_.reference.x, -measures_.reference.y);
        const Place place = {viewport * measures_.fit, style_, measures_.inside};
        const Visit visit(conversion_.visited, marker_);
        Group group(conversion_, marker_, place, target);
        if (isClipped_) group.clipTo(viewportOutline().mapped(viewport));
        convertChildren(conversion_, marker_, place, group.output(), target);
        group.finish(out, Group::Names::kLeft);
    }

  private:
    Path viewportOutline() const { return rectangleOutline({0.0, 0.0, measures_.width, measures_.height}); }

    // Whether anything of it lies outside of its viewport. Most markers need no clip path.
    bool reachesOut() const {
        Target target;
        target.isMeasured = true;
        target.countsStrokes = true;
        OutputElement nothing("g");
        const Visit visit(conversion_.visited, marker_);
        convertChildren(conversion_, marker_, {measures_.fit, style_, measures_.inside}, nothing, target);
        const std::optional<Box>& box = target.box;
        return box && (box->left < 0.0 || box->top < 0.0 || box->right > measures_.width ||
                       box->bottom > measures_.height);
    }

    Conversion& conversion_;
    const SourceElement& marker_;
    const Place& shape_;
    const Measures& measures_;
    double scale_;
    Style style_;
    bool isClipped_ = false;
};

void drawAt(Conversion& conversion, Property position, const std::vector<Vertex>& vertices,
            const Place& place, double strokeWidth, OutputElement& out, Target& target) {
    const SourceElement* const marker = markerAt(conversion, place, position);
    if (!marker || !conversion.visited.mayEnter(*marker)) return;
    const bool isByStroke = marker->attribute(Name::kMarkerUnits) != u"userSpaceOnUse";
    const double scale = isByStroke ? strokeWidth : 1.0;
    const std::optional<Measures> measures = readMeasures(*marker, place);
    if (!(scale > 0.0) || !measures) return;
    Marker drawn(conversion, *marker, place, *measures, scale);
    if (position == Property::kMarkerStart) return drawn.draw(vertices.front(), true, out, target);
    if (position == Property::kMarkerEnd) return drawn.draw(vertices.back(), false, out, target);
    for (size_t i = 1; i + 1 < vertices.size(); ++i) drawn.draw(vertices[i], false, out, target);
}

}  // namespace

bool hasMarkers(const SourceElement& shape, const Place& place) {
    if (!takesMarkers(shape.tag())) return false;
    constexpr QStringView kNone = u"none";
    return std::any_of(std::begin(kPositions), std::end(kPositions), [&](Property position) {
        const QStringView value = place.style[position];
        return value != kNone && value.startsWith(u"url", Qt::CaseInsensitive);
    });
}

void drawMarkers(Conversion& conversion, const SourceElement& shape, const Path& path, const Place& place,
                 double strokeWidth, OutputElement& out, Target& target) {
    std::vector<Vertex> vertices = verticesOf(path);
    if (vertices.empty()) return;
    if (vertices.size() > kMostMarkers) {
        addNote(conversion, NoteCode::kLeftOut, shape, QStringLiteral("its markers: there are too many"));
        return;
    }
    // Those around a marker's shape are not for what is in the marker.
    const MarkedShape marked = {place, conversion.marked};
    conversion.marked = &marked;
    for (const Property position : kPositions)
        drawAt(conversion, position, vertices, place, strokeWidth, out, target);
    conversion.marked = marked.outer;
    if (!target.isMeasured)
        addNote(conversion, NoteCode::kCarried, shape, QStringLiteral("its markers became shapes"), "marker");
}

}  // namespace tznormalize
