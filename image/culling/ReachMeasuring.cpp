// Every shape comes after a marker, a path that says by its coordinates which shape comes
// next. What is painted after it belongs to the shape; what is painted without a marker of its own only makes
// the reach of the one before larger. A shape whose marker does not come (in a group that is not displayed)
// counts as reaching everywhere, and so do those that cannot be measured.
#include "image/culling/ReachMeasuring.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <algorithm>
#include <array>
#include <cmath>

#include "image/PaintProbe.h"
#include "image/culling/OutlineStrips.h"

namespace tzsvg {
namespace {

using Kind = DrawingPart::Kind;

// Beyond so many times the drawing's size, what is lost when numbers cancel out may be pixels.
constexpr double kMostMagnitude = 1 << 20;

// A shape smaller than this part of the drawing, a tile of the finest level, is told by its box alone, and so
// is one of many lines.
constexpr double kSmallShape = 1.0 / 256.0;
constexpr size_t kMostStrips = 1024;

// The lines that stand for a curve are no farther from it than this part of the drawing.
constexpr double kFineEnough = 1.0 / 2048.0;

constexpr size_t kShapesAtOnce = 4096;

double largestScale(const QTransform& t) {
    return std::sqrt(t.m11() * t.m11() + t.m12() * t.m12() + t.m21() * t.m21() + t.m22() * t.m22());
}

// How far from a path its stroke may lie, in the path's own units.
double strokeRadius(const QPen& pen, bool isOneLine) {
    const bool hasMiters =
        !isOneLine && (pen.joinStyle() == Qt::MiterJoin || pen.joinStyle() == Qt::SvgMiterJoin);
    return pen.widthF() * std::max(1.0, hasMiters ? pen.miterLimit() : 1.0);
}

class ReachEngine : public ProbeEngine {
  public:
    ReachEngine(const DrawingParts& drawing, const QRectF& area)
        : drawing_(drawing),
          reach_(area.topLeft()),
          side_(std::max(area.width(), area.height())),
          largest_(kMostMagnitude * side_) {}

    // The markers of the pieces come in order; those of groups come again in each.
    void beginPiece() {
        endShape();
        lastMarker_ = -1;
        wildBefore_ = 0;
    }
    void endDrawing() {
        endShape();
        addUnmeasuredBefore(DrawingPart::kRoot);
        reach_.finish(side_);
    }

    bool failed() const { return failed_; }
    PartReach takeReach() { return std::move(reach_); }

    void drawPath(const QPainterPath& path) override {
        if (!takeMarker(path)) add(path, state->brush().style() != Qt::NoBrush);
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        QPainterPath path;
        if (count > 0) path.moveTo(points[0]);
        for (int i = 1; i < count; ++i) path.lineTo(points[i]);
        if (count > 0 && mode != PolylineMode) path.lineTo(points[0]);
        add(path, mode != PolylineMode && state->brush().style() != Qt::NoBrush);
    }

    // The defaults of these leave out what has no extent.
    void drawRects(const QRectF* rects, int count) override {
        for (int i = 0; i < count; ++i) {
            const QRectF& r = rects[i];
            const std::array<QPointF, 4> corners = {r.topLeft(), r.topRight(), r.bottomRight(),
                                                    r.bottomLeft()};
            drawPolygon(corners.data(), static_cast<int>(corners.size()), OddEvenMode);
        }
    }
    void drawEllipse(const QRectF& rect) override {
        QPainterPath path;
        path.addEllipse(rect);
        if (path.isEmpty()) {
            drawRects(&rect, 1);
        } else {
            drawPath(path);
        }
    }
    void drawLines(const QLineF* lines, int count) override {
        for (int i = 0; i < count; ++i) {
            const std::array<QPointF, 2> ends = {lines[i].p1(), lines[i].p2()};
            drawPolygon(ends.data(), static_cast<int>(ends.size()), PolylineMode);
        }
    }
    void drawPoints(const QPointF* points, int count) override {
        for (int i = 0; i < count; ++i) drawPolygon(points + i, 1, PolylineMode);
    }

    // No shape is drawn as any of these.
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*from*/) override {
        isUnknown_ = true;
    }
    void drawImage(const QRectF& /*to*/, const QImage& /*image*/, const QRectF& /*from*/,
                   Qt::ImageConversionFlags /*flags*/) override {
        isUnknown_ = true;
    }
    void drawTextItem(const QPointF& /*at*/, const QTextItem& /*text*/) override { isUnknown_ = true; }

  private:
    bool takeMarker(const QPainterPath& path) {
        if (path.elementCount() != 2) return false;
        const QPainterPath::Element from = path.elementAt(0);
        const QPainterPath::Element to = path.elementAt(1);
        if (from.y != DrawingParts::kMarkerY || to.y != from.y + 1.0 || to.x != from.x) return false;
        if (from.x == lastMarker_ && from.x != DrawingParts::kNoPart) return true;  // its stroke
        endShape();
        const QTransform& t = state->transform();
        const bool isTame = t.isAffine() && isMeasurable(t, {0.0, 0.0});
        if (from.x == DrawingParts::kNoPart) {
            failed_ = failed_ || (lastMarker_ < 0 && !isTame);
            return true;
        }
        const bool isInOrder = from.x > lastMarker_ && from.x < static_cast<double>(drawing_.parts().size());
        if (!isInOrder) failed_ = true;
        if (failed_) return true;
        lastMarker_ = from.x;
        beginPart(static_cast<uint32_t>(from.x), isTame);
        return true;
    }

    void beginPart(uint32_t part, bool isTame) {
        const DrawingPart& of = drawing_.parts()[part];
        if (of.kind == Kind::kGroup) {
            if (!isTame) wildBefore_ = std::max(wildBefore_, of.next);
            return;
        }
        addUnmeasuredBefore(part);
        current_ = part;
        isUnknown_ = !isTame || part < wildBefore_;
    }

    void endShape() {
        if (current_ == DrawingPart::kRoot) return;
        if (!shape_.box.isFinite() && shape_.box.left <= shape_.box.right) isUnknown_ = true;
        if (isUnknown_) shape_ = {Box::everywhere(), {}, false};
        if (shape_.strips.size() > kMostStrips || shape_.box.largerSide() < kSmallShape * side_ ||
            isBox(shape_))
            shape_.strips.clear();
        reach_.add(current_, shape_);
        shape_ = {};
        isUnknown_ = false;
        current_ = DrawingPart::kRoot;
    }

    // The shapes up to a part, that part included, that no marker was seen of.
    void addUnmeasuredBefore(uint32_t part) {
        const std::vector<uint32_t>& shapes = drawing_.shapes();
        for (; nextShape_ < shapes.size() && shapes[nextShape_] < part; ++nextShape_)
            reach_.add(shapes[nextShape_], {Box::everywhere(), {}, false});
        if (nextShape_ >= shapes.size()) return;
        if (shapes[nextShape_] == part) {
            ++nextShape_;
        } else if (part != DrawingPart::kRoot) {
            failed_ = true;
        }
    }

    bool isMeasurable(const QTransform& t, const QPointF& p) const {
        return std::abs(t.m11() * p.x()) + std::abs(t.m21() * p.y()) + std::abs(t.dx()) <= largest_ &&
               std::abs(t.m12() * p.x()) + std::abs(t.m22() * p.y()) + std::abs(t.dy()) <= largest_;
    }

    void add(const QPainterPath& path, bool fills) {
        if (current_ == DrawingPart::kRoot || isUnknown_ || path.elementCount() == 0) return;
        const QTransform& t = state->transform();
        const QPen& pen = state->pen();
        const bool strokes = pen.style() != Qt::NoPen && pen.brush().style() != Qt::NoBrush;
        if (!fills && !strokes) return;
        const bool hasArea = fills && !isOfLines(path);
        shape_.isFilled = shape_.isFilled || hasArea;
        // Widths that stay when the drawing is enlarged. One pixel is what smooth edges take.
        if (!t.isAffine() || (strokes && pen.isCosmetic() && pen.widthF() > 1.0)) {
            isUnknown_ = true;
            return;
        }
        const bool isOneLine = path.elementCount() == 2 && path.elementAt(1).isLineTo();
        const double radius = strokes && !pen.isCosmetic() ? strokeRadius(pen, isOneLine) : 0.0;
        addBox(path, t, radius);
        if (!isUnknown_) {
            const OutlineStrips outline(t, radius * largestScale(t), kFineEnough * side_, kMostStrips);
            outline.append(path, hasArea, shape_.strips);
        }
    }

    void addBox(const QPainterPath& path, const QTransform& t, double radius) {
        Box box;
        for (int i = 0; i < path.elementCount(); ++i) box.add(Box::of(QPointF(path.elementAt(i)), radius));
        for (const QPointF& corner : {QPointF(box.left, box.top), QPointF(box.right, box.top),
                                      QPointF(box.right, box.bottom), QPointF(box.left, box.bottom)}) {
            if (!isMeasurable(t, corner)) isUnknown_ = true;
            shape_.box.add(Box::of(t.map(corner), 0.0));
        }
    }

    const DrawingParts& drawing_;
    PartReach reach_;
    const double side_;
    const double largest_;
    double lastMarker_ = -1;
    uint32_t wildBefore_ = 0;  // parts inside a group that is too far out to be measured
    size_t nextShape_ = 0;     // in the drawing's shapes: the first that was not added yet
    bool failed_ = false;

    uint32_t current_ = DrawingPart::kRoot;  // the shape that is being drawn
    Reach shape_;
    bool isUnknown_ = false;
};

}  // namespace

std::optional<PartReach> measureReach(const DrawingParts& drawing, const QRectF& area) {
    const double side = std::max(area.width(), area.height());
    if (std::max(std::abs(area.x()), std::abs(area.y())) > kMostMagnitude * side) return std::nullopt;
    ReachEngine engine(drawing, area);
    ProbeDevice device(QSize(1, 1), engine);
    const std::vector<uint32_t>& shapes = drawing.shapes();
    for (size_t i = 0; i < shapes.size(); i += kShapesAtOnce) {
        const auto end = shapes.begin() + static_cast<ptrdiff_t>(std::min(i + kShapesAtOnce, shapes.size()));
        QSvgRenderer renderer;
        if (!renderer.load(
                drawing.text(drawing.with({shapes.begin() + static_cast<ptrdiff_t>(i), end}), true)))
            return std::nullopt;
        engine.beginPiece();
        QPainter painter(&device);
        renderer.setViewBox(area);
        renderer.render(&painter, area);  // one unit a pixel: what the probe is told is in the root's units
        painter.end();
        if (engine.failed()) return std::nullopt;
    }
    engine.endDrawing();
    if (engine.failed()) return std::nullopt;
    return engine.takeReach();
}

}  // namespace tzsvg
