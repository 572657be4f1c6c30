// See the header. Called by the converters and by the measuring of the document.
#include "import/shape/ShapeItem.h"

#include <QPen>
#include <algorithm>

#include "import/shape/ShapeNames.h"
#include "import/text/PathData.h"
#include "import/text/PathPoint.h"
#include "import/text/PointList.h"

namespace tzsvg {
namespace {

// Attribute names, built once.
struct Names {
    const QString cx = QStringLiteral("cx");
    const QString cy = QStringLiteral("cy");
    const QString r = QStringLiteral("r");
    const QString rx = QStringLiteral("rx");
    const QString ry = QStringLiteral("ry");
    const QString x = QStringLiteral("x");
    const QString y = QStringLiteral("y");
    const QString x1 = QStringLiteral("x1");
    const QString y1 = QStringLiteral("y1");
    const QString x2 = QStringLiteral("x2");
    const QString y2 = QStringLiteral("y2");
    const QString width = QStringLiteral("width");
    const QString height = QStringLiteral("height");
    const QString points = QStringLiteral("points");
    const QString d = QStringLiteral("d");
};

const Names& names() {
    static const Names built;
    return built;
}

// The toolkit's default pen is 1 wide and would widen the bounds of an item; they are the geometry's own
// here.
template <class Item, class... Arguments>
std::unique_ptr<Item> makeItem(Arguments&&... arguments) {
    static const QPen kHairline{QBrush(Qt::black), 0};
    auto item = std::make_unique<Item>(std::forward<Arguments>(arguments)...);
    item->setPen(kHairline);
    return item;
}

// An item that holds the path also when it is a single point: the toolkit's constructor takes such a path for
// an empty one and drops it, and setPath() takes one at the origin for the path it has.
std::unique_ptr<QGraphicsPathItem> makePathItem(const QPainterPath& path) {
    auto item = makeItem<QGraphicsPathItem>(path);
    if (item->path().elementCount() != path.elementCount()) {
        QPainterPath other;
        other.lineTo(1, 1);
        item->setPath(other);
        item->setPath(path);
    }
    return item;
}

// Reads lengths of one element.
class Lengths {
  public:
    Lengths(const QDomElement& element, const LengthContext& context)
        : element_(element), context_(context) {}

    double horizontal(const QString& name) const { return read(name, Axis::kHorizontal); }
    double vertical(const QString& name) const { return read(name, Axis::kVertical); }
    bool has(const QString& name) const { return element_.hasAttribute(name); }

  private:
    double read(const QString& name, Axis axis) const {
        return parseLength(element_.attribute(name), axis, context_);
    }

    const QDomElement& element_;
    const LengthContext& context_;
};

// Reads "points"; false when it is absent or malformed.
bool pointsOf(const QDomElement& element, QVector<QPointF>& points) {
    return element.hasAttribute(names().points) && readPointList(element.attribute(names().points), points);
}

}  // namespace

bool isShapeElement(const QDomNode& node) {
    if (!node.isElement()) return false;
    const ShapeNames& n = shapeNames();
    const QString name = node.nodeName();
    return name == n.rect || name == n.path || name == n.circle || name == n.ellipse || name == n.line ||
           name == n.polygon || name == n.polyline;
}

std::unique_ptr<QGraphicsItem> createShapeItem(const QDomNode& node, const LengthContext& lengths) {
    if (!node.isElement()) return nullptr;
    const ShapeNames& n = shapeNames();
    const QDomElement element = node.toElement();
    const QString name = element.tagName();
    const auto named = [&](const QString& kind) {
        return name.size() == kind.size() && QString::compare(name, kind, Qt::CaseInsensitive) == 0;
    };
    if (named(n.circle) || named(n.ellipse)) return buildEllipseItem(element, lengths);
    if (named(n.line)) return buildLineItem(element, lengths);
    if (named(n.path)) return buildPathItem(element);
    if (named(n.polygon)) return buildPolygonItem(element);
    if (named(n.polyline)) return buildPolylineItem(element);
    if (named(n.rect)) return buildRectItem(element, lengths);
    return nullptr;
}

std::unique_ptr<QGraphicsEllipseItem> buildEllipseItem(const QDomElement& element,
                                                       const LengthContext& lengths) {
    const Names& n = names();
    const Lengths read(element, lengths);
    const double cx = read.horizontal(n.cx);
    const double cy = read.vertical(n.cy);
    // "r" sets both radii whatever the element's name, and "rx" and "ry" then replace one each: a circle with
    // "rx" is an ellipse. Meant so; ShapeItem/ellipse pins it.
    double rx = read.horizontal(n.r);
    double ry = rx;
    if (read.has(n.rx)) rx = read.horizontal(n.rx);
    if (read.has(n.ry)) ry = read.vertical(n.ry);
    return makeItem<QGraphicsEllipseItem>(cx - rx, cy - ry, 2 * rx, 2 * ry);
}

std::unique_ptr<QGraphicsLineItem> buildLineItem(const QDomElement& element, const LengthContext& lengths) {
    const Names& n = names();
    const Lengths read(element, lengths);
    return makeItem<QGraphicsLineItem>(read.horizontal(n.x1), read.vertical(n.y1), read.horizontal(n.x2),
                                       read.vertical(n.y2));
}

std::unique_ptr<QGraphicsRectItem> buildRectItem(const QDomElement& element, const LengthContext& lengths) {
    const Names& n = names();
    const Lengths read(element, lengths);
    const QRectF rect(read.horizontal(n.x), read.vertical(n.y), read.horizontal(n.width),
                      read.vertical(n.height));
    if (!read.has(n.rx) && !read.has(n.ry)) return makeItem<QGraphicsRectItem>(rect);
    // A radius that is absent stays 0, it is not copied from the other; neither is clamped. Meant so;
    // ShapeItem/roundedRect pins it.
    return makeItem<QGraphicsItemRoundedRect>(rect, read.horizontal(n.rx), read.vertical(n.ry));
}

std::unique_ptr<QGraphicsPolygonItem> buildPolygonItem(const QDomElement& element) {
    QVector<QPointF> points;
    if (!pointsOf(element, points) || points.isEmpty()) return nullptr;
    return makeItem<QGraphicsPolygonItem>(QPolygonF(points));
}

std::unique_ptr<QGraphicsPathItem> buildPolylineItem(const QDomElement& element) {
    QVector<QPointF> points;
    if (!pointsOf(element, points)) return nullptr;
    if (!std::all_of(points.cbegin(), points.cend(), fitsPainterPath)) return nullptr;
    QPainterPath path;
    if (!points.isEmpty()) path.moveTo(points.first());
    for (int i = 1; i < points.size(); ++i) path.lineTo(points.at(i));
    return makePathItem(path);
}

std::unique_ptr<QGraphicsPathItem> buildPathItem(const QDomElement& element) {
    if (!element.hasAttribute(names().d)) return nullptr;
    QPainterPath path;
    if (!parsePathData(element.attribute(names().d), path)) return nullptr;
    return makePathItem(path);
}

}  // namespace tzsvg
