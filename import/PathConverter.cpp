// Conversion of a "path" element. The painter path is cut at its moves; every piece becomes an open polygon
// but the last, which closes when it ends where it began.
#include <QGraphicsPathItem>
#include <QPainterPath>
#include <cmath>
#include <string>
#include <vector>

#include "import/PolygonBuilder.h"
#include "import/PolygonTags.h"
#include "import/SVGLoader.h"
#include "import/ShapeConverter.h"
#include "svg/RoundTripNames.h"
#include "svg/shape/ShapeItem.h"

namespace tzsvg {
namespace {

// A straight segment from `from` to `to` as a cubic: its controls at the thirds, in single precision.
void appendStraight(std::vector<QPointF>& points, const QPointF& to) {
    const QPointF from = points.back();
    const auto at = [&](double part) {
        return QPointF(static_cast<float>(from.x() + (to.x() - from.x()) * part),
                       static_cast<float>(from.y() + (to.y() - from.y()) * part));
    };
    points.push_back(at(1.0 / 3.0));
    points.push_back(at(2.0 / 3.0));
    points.push_back(to);
}

bool samePlace(const QPointF& a, const QPointF& b) {
    constexpr double kTolerance = 1e-12;
    return std::abs(a.x() - b.x()) <= kTolerance && std::abs(a.y() - b.y()) <= kTolerance;
}

// Turns the pieces of one path into tagged polygons.
class SubPaths {
  public:
    SubPaths(SVGLoader& loader, const XmlNode& element, const QGraphicsPathItem& item, QTransform transform,
             unsigned drawingIndex)
        : loader_(loader),
          element_(element),
          item_(item),
          transform_(transform),
          drawingIndex_(std::to_string(drawingIndex)) {}

    // A piece that a following move ended: open, even when it returns to its start.
    bool emitInner(const std::vector<QPointF>& points) {
        if (!emitPolygon(points, Closing::kOpen)) return false;
        if (!emitted_) {
            loader_.tagLastPolygon(kTagSubPath, "start{" + std::to_string(loader_.nextPath()) + "}");
            emitted_ = true;
        } else {
            loader_.tagLastPolygon(kTagSubPath, "{" + std::to_string(loader_.pathCounter()) + "}");
        }
        loader_.tagLastPolygon(kTagDrawingIndex, drawingIndex_);
        return true;
    }

    // The last piece. A path of one piece gets no sub-path tag.
    bool emitLast(std::vector<QPointF> points) {
        // "z" adds no vertex of its own: Qt's closing line ends on the first point, and that end is dropped
        // for a vertex on the first point itself. Only the last piece closes; meant so, and
        // PathConversion/onlyTheLastCloses pins it.
        const bool closed = points.size() >= 2 && samePlace(points.front(), points.back());
        if (closed) points.pop_back();
        if (!emitPolygon(points, closed ? Closing::kFirstVertex : Closing::kOpen)) return false;
        if (emitted_) {
            loader_.tagLastPolygon(kTagSubPath, "end{" + std::to_string(loader_.pathCounter()) + "}");
        }
        loader_.tagLastPolygon(kTagDrawingIndex, drawingIndex_);
        return true;
    }

  private:
    bool emitPolygon(const std::vector<QPointF>& points, Closing closing) {
        if (!addPolygon(loader_, kTzPolygonBezier, transform_, points, closing)) return false;
        writePolygonTags(loader_, element_, item_);  // a step that fails ends the chain, not the conversion
        return true;
    }

    SVGLoader& loader_;
    const XmlNode& element_;
    const QGraphicsPathItem& item_;
    const QTransform transform_;
    const std::string drawingIndex_;
    bool emitted_ = false;
};

}  // namespace

bool convertPath(SVGLoader& loader, const XmlNode& element, unsigned drawingIndex) {
    if (!loader.meshAvailable()) return false;
    if (!element.has(Attribute::kData)) return false;
    const auto parsed = loader.parsedPaths().take(element);
    const auto item = parsed ? makePathItem(*parsed) : buildPathItem(element);
    if (!item) return false;
    QTransform transform;
    if (!sceneTransform(loader, element, transform)) return false;

    const QPainterPath path = item->path();
    SubPaths subPaths(loader, element, *item, transform, drawingIndex);
    std::vector<QPointF> pending;
    pending.reserve(3 * static_cast<size_t>(path.elementCount()));  // as many as all its lines would give
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element piece = path.elementAt(i);
        if (piece.isMoveTo()) {
            if (!pending.empty() && !subPaths.emitInner(pending)) return false;
            pending.assign(1, piece);
        } else if (piece.isLineTo()) {
            appendStraight(pending, piece);
        } else {
            pending.emplace_back(piece);
        }
    }
    return pending.empty() || subPaths.emitLast(std::move(pending));
}

}  // namespace tzsvg
