// The point lists stand in the order in which the saver and other readers of the mesh expect them: the
// outline's anchors and control points in turn.
#include "import/ShapeConverter.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsPathItem>
#include <vector>

#include "import/PolygonBuilder.h"
#include "import/PolygonTags.h"
#include "import/SVGLoader.h"
#include "svg/shape/ShapeItem.h"

namespace tzsvg {
namespace {

// The control points of a quarter circle of radius 1 lie this far from its anchors.
constexpr double kQuarterArc = 0.5522847498307932;

// The frame of every converter: `outline` turns the item into a list of points.
template <class Item, class Outline>
bool convert(SVGLoader& loader, const XmlNode& element, const Item& item, TzTagId type, Closing closing,
             Outline&& outline) {
    if (!item) return false;
    QTransform transform;
    if (!sceneTransform(loader, element, transform)) return false;
    const std::vector<QPointF> points = outline(*item);
    if (points.empty()) return true;  // no polygon, and nothing to tag
    return addPolygon(loader, type, transform, points, closing) && writePolygonTags(loader, element, *item);
}

std::vector<QPointF> ellipseOutline(const QRectF& rect) {
    const double rx = rect.width() * 0.5;
    const double ry = rect.height() * 0.5;
    const double cx = rect.x() + rx;
    const double cy = rect.y() + ry;
    const double kx = kQuarterArc * rx;
    const double ky = kQuarterArc * ry;
    return {
        {cx, cy + ry}, {cx + kx, cy + ry}, {cx + rx, cy + ky},  // anchor, control, control
        {cx + rx, cy}, {cx + rx, cy - ky}, {cx + kx, cy - ry},  //
        {cx, cy - ry}, {cx - kx, cy - ry}, {cx - rx, cy - ky},  //
        {cx - rx, cy}, {cx - rx, cy + ky}, {cx - kx, cy + ry},
    };
}

// Four edges of two vertices each within one polygon, every corner added twice. This layout is deliberate: a
// rectangle is told from a polygon by it. ShapeConversion/rectangle pins it.
std::vector<QPointF> rectOutline(const QRectF& rect) {
    const QPointF a(rect.x(), rect.y());
    const QPointF b(rect.x() + rect.width(), rect.y());
    const QPointF c(rect.x() + rect.width(), rect.y() + rect.height());
    const QPointF d(rect.x(), rect.y() + rect.height());
    return {a, b, b, c, c, d, d, a};
}

// Straight edges and quarter arcs in turn, from the top edge round by the right. Edges and radii are held in
// single precision. Radii larger than the half sizes are not clamped.
std::vector<QPointF> roundedOutline(const QGraphicsItemRoundedRect& item) {
    const QRectF rect = item.rect();
    const double left = static_cast<float>(rect.x());
    const double right = static_cast<float>(rect.x() + rect.width());
    const double top = static_cast<float>(rect.y());
    const double bottom = static_cast<float>(rect.y() + rect.height());
    const double rx = static_cast<float>(item.rx());
    const double ry = static_cast<float>(item.ry());
    // Distances from a corner: the controls of a straight edge lie k radii inward from its ends, those of an
    // arc (1 - k) radii from the corner.
    const double edgeX = 1.5522847498307932 * rx;
    const double edgeY = 1.5522847498307932 * ry;
    const double arcX = 0.44771525016920677 * rx;
    const double arcY = 0.44771525016920677 * ry;
    return {
        {left + rx, top},     {left + edgeX, top},     {right - edgeX, top},     // top edge
        {right - rx, top},    {right - arcX, top},     {right, top + arcY},      // top right
        {right, top + ry},    {right, top + edgeY},    {right, bottom - edgeY},  // right edge
        {right, bottom - ry}, {right, bottom - arcY},  {right - arcX, bottom},   // bottom right
        {right - rx, bottom}, {right - edgeX, bottom}, {left + edgeX, bottom},   // bottom edge
        {left + rx, bottom},  {left + arcX, bottom},   {left, bottom - arcY},    // bottom left
        {left, bottom - ry},  {left, bottom - edgeY},  {left, top + edgeY},      // left edge
        {left, top + ry},     {left, top + arcY},      {left + arcX, top},       // top left
    };
}

}  // namespace

bool convertEllipse(SVGLoader& loader, const XmlNode& element) {
    if (!loader.meshAvailable()) return false;
    return convert(loader, element, buildEllipseItem(element, loader.lengths()), kTzPolygonBezier,
                   Closing::kFirstVertex, [](const auto& item) { return ellipseOutline(item.rect()); });
}

bool convertRect(SVGLoader& loader, const XmlNode& element) {
    if (!loader.meshAvailable()) return false;
    const auto item = buildRectItem(element, loader.lengths());
    if (const auto* const rounded = dynamic_cast<const QGraphicsItemRoundedRect*>(item.get())) {
        return convert(loader, element, rounded, kTzPolygonBezier, Closing::kFirstVertex, roundedOutline);
    }
    return convert(loader, element, item, kTzPolygonLine, Closing::kOpen,
                   [](const auto& plain) { return rectOutline(plain.rect()); });
}

bool convertLine(SVGLoader& loader, const XmlNode& element) {
    if (!loader.meshAvailable()) return false;
    return convert(loader, element, buildLineItem(element, loader.lengths()), kTzPolygonLine, Closing::kOpen,
                   [](const auto& item) {
                       return std::vector<QPointF>{item.line().p1(), item.line().p2()};
                   });
}

bool convertPolygon(SVGLoader& loader, const XmlNode& element) {
    if (!loader.meshAvailable()) return false;
    return convert(loader, element, buildPolygonItem(element), kTzPolygonLine, Closing::kOpen,
                   [](const auto& item) {
                       const QPolygonF polygon = item.polygon();
                       std::vector<QPointF> points(polygon.begin(), polygon.end());
                       // The outline closes on a point of its own, at the place of the first.
                       if (!points.empty()) points.push_back(points.front());
                       return points;
                   });
}

bool convertPolyline(SVGLoader& loader, const XmlNode& element) {
    if (!loader.meshAvailable()) return false;
    if (!element.has(Attribute::kPoints)) return false;
    const auto parsed = loader.parsedPaths().take(element);
    return convert(loader, element, parsed ? makePathItem(*parsed) : buildPolylineItem(element),
                   kTzPolygonLine, Closing::kOpen, [](const auto& item) {
                       const QPainterPath path = item.path();
                       std::vector<QPointF> points;
                       points.reserve(static_cast<size_t>(path.elementCount()));
                       for (int i = 0; i < path.elementCount(); ++i) points.emplace_back(path.elementAt(i));
                       return points;
                   });
}

}  // namespace tzsvg
