#include "image/trimming/TrimmedPaint.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "image/CubicCurve.h"
#include "image/PaintProbe.h"
#include "image/StrokeReach.h"
#include "image/trimming/OutlineTrimmer.h"
#include "image/trimming/RectShapes.h"

namespace tzsvg {
namespace {

// A gradient that is fitted to the shape it fills, as one that fits this shape whatever it fills.
QBrush fittedTo(const QPainterPath& path, const QBrush& brush) {
    if (!brush.gradient() || brush.gradient()->coordinateMode() == QGradient::LogicalMode) return brush;
    const QRectF shape = path.controlPointRect();
    QGradient gradient = *brush.gradient();
    const QTransform fit(shape.width(), 0.0, 0.0, shape.height(), shape.x(), shape.y());
    const bool isOfShape = gradient.coordinateMode() == QGradient::ObjectMode;
    gradient.setCoordinateMode(QGradient::LogicalMode);
    QBrush fitted(gradient);
    fitted.setTransform(isOfShape ? brush.transform() * fit : fit * brush.transform());
    return fitted;
}

// Whether curves and lines are cut with the same numbers here and in Qt: where a processor multiplies and
// adds in one go, compilers do so now here, now there, and Qt's rasterizer counts in `long`.
constexpr bool isComputedAlike() {
#if defined(__x86_64__) && defined(__LP64__) && !defined(__FMA__)
    return true;
#else
    return false;
#endif
}

// The outline that Qt fills for a stroke. Nothing where it may not be: QPainterPath leaves out lines of a
// millionth of a millionth of their coordinates, which Qt's engine keeps, and where these are large that is
// seen.
std::optional<QPainterPath> strokeOf(const QPainterPath& path, const QPen& pen, double scale) {
    constexpr double kMostPixels = 1U << 22U;
    const QRectF box = path.controlPointRect();
    const double most =
        std::max({std::abs(box.left()), std::abs(box.right()), std::abs(box.top()), std::abs(box.bottom())});
    if (!(most * scale < kMostPixels)) return std::nullopt;
    QPainterPathStroker stroker;
    stroker.setWidth(pen.widthF());
    stroker.setCapStyle(pen.capStyle());
    stroker.setJoinStyle(pen.joinStyle());
    stroker.setMiterLimit(pen.miterLimit());
    return stroker.createStroke(path);
}

// Hands on what it is told to a painter of the tile.
class TrimmingEngine : public ProbeEngine {
  public:
    TrimmingEngine(QPainter& painter, QSize tile) : painter_(painter), tile_(tile) {}

    bool hasGivenUp() const { return hasGivenUp_; }

    void updateState(const QPaintEngineState& of) override;
    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawRects(const QRectF* rects, int count) override;
    void drawEllipse(const QRectF& rect) override;
    void drawLines(const QLineF* lines, int count) override;
    void drawPoints(const QPointF* points, int count) override { tilePainter().drawPoints(points, count); }
    // No shape is drawn as any of these.
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*from*/) override {
        hasGivenUp_ = true;
    }
    void drawImage(const QRectF& /*to*/, const QImage& /*image*/, const QRectF& /*from*/,
                   Qt::ImageConversionFlags /*flags*/) override {
        hasGivenUp_ = true;
    }
    void drawTextItem(const QPointF& /*at*/, const QTextItem& /*text*/) override { hasGivenUp_ = true; }

  private:
    enum class Way { kAsItIs, kFilled, kStroked };
    QPainter& tilePainter();
    void strokeNothingOf(const QPainterPath& path);
    Way way() const;
    bool isStrokedByOutline(const QPen& pen) const;
    // Draws the path, or by `asItIs` when nothing may be left out of it. Gives up when it may be a rounded
    // rectangle near the tile.
    template <typename Draw>
    void draw(const QPainterPath& path, bool mayBeRounded, const Draw& asItIs);
    void fill(const QPainterPath& path, const QBrush& brush);

    QPainter& painter_;
    const QSize tile_;
    DirtyFlags changed_;
    bool hasPolyline_ = false;  // before the shape
    bool hasGivenUp_ = false;
};

void TrimmingEngine::updateState(const QPaintEngineState& of) {
    changed_ |= of.state();
    if (of.painter()->hasClipping()) hasGivenUp_ = true;
}

// The tile's painter, told what has changed.
QPainter& TrimmingEngine::tilePainter() {
    if (changed_.testFlag(DirtyTransform)) painter_.setTransform(state->transform());
    if (changed_.testFlag(DirtyPen)) painter_.setPen(state->pen());
    if (changed_.testFlag(DirtyBrush)) painter_.setBrush(state->brush());
    if (changed_.testFlag(DirtyOpacity)) painter_.setOpacity(state->opacity());
    if (changed_.testFlag(DirtyCompositionMode)) painter_.setCompositionMode(state->compositionMode());
    if (changed_.testFlag(DirtyHints)) {
        painter_.setRenderHints(painter_.renderHints(), false);
        painter_.setRenderHints(state->renderHints());
    }
    changed_ = {};
    return painter_;
}

// Without smooth edges Qt has another rasterizer.
TrimmingEngine::Way TrimmingEngine::way() const {
    const QBrush& brush = state->brush();
    const QPen& pen = state->pen();
    if (!state->renderHints().testFlag(QPainter::Antialiasing)) return Way::kAsItIs;
    if (pen.style() == Qt::NoPen) {
        const bool isOfDevice =
            brush.gradient() && brush.gradient()->coordinateMode() == QGradient::StretchToDeviceMode;
        return brush.style() == Qt::TexturePattern || isOfDevice ? Way::kAsItIs : Way::kFilled;
    }
    return brush.style() == Qt::NoBrush && isStrokedByOutline(pen) ? Way::kStroked : Way::kAsItIs;
}

// Whether Qt makes an outline of the stroke and fills it: neither dashes nor lines of a pixel.
bool TrimmingEngine::isStrokedByOutline(const QPen& pen) const {
    constexpr double kPixels = 1.01;
    return pen.style() == Qt::SolidLine && pen.brush().style() == Qt::SolidPattern && !pen.isCosmetic() &&
           pen.widthF() * scaleOf(state->transform()) > kPixels;
}

template <typename Draw>
void TrimmingEngine::draw(const QPainterPath& path, bool mayBeRounded, const Draw& asItIs) {
    const QPen& pen = state->pen();
    const bool isFilled = pen.style() == Qt::NoPen;
    if (hasGivenUp_ || (isFilled && state->brush().style() == Qt::NoBrush)) return;
    if (path.isEmpty()) return asItIs();
    const OutlineTrimmer areas(state->transform(), tile_, 0.0);
    std::optional<OutlineTrimmer::Trimmed> trimmed;
    if (isFilled) {
        trimmed = areas.filled(path);
    } else if (state->brush().style() == Qt::NoBrush && !pen.isCosmetic() && strokeIsTold(path)) {
        trimmed = OutlineTrimmer(state->transform(), tile_, strokeRadius(pen, false)).stroked(path);
    }
    if (mayBeRounded && (!trimmed || trimmed->isNear)) {
        hasGivenUp_ = true;
        return;
    }
    if (!trimmed) return asItIs();
    const Way drawn = way();
    if (drawn == Way::kAsItIs && (!trimmed->path.isEmpty() || hasPolyline_)) return asItIs();
    if (drawn == Way::kStroked && hasPolyline_ && isOfSingleLines(path)) return asItIs();
    if (drawn == Way::kStroked && !trimmed->path.isEmpty()) {
        const auto outline = strokeOf(trimmed->path, pen, scaleOf(state->transform()));
        trimmed = outline ? areas.filled(*outline) : std::nullopt;
        if (!trimmed) return asItIs();
    }
    if (!isFilled && hasPolyline_) strokeNothingOf(path);
    if (!trimmed->path.isEmpty())
        fill(trimmed->path, isFilled ? fittedTo(path, state->brush()) : pen.brush());
}

void TrimmingEngine::fill(const QPainterPath& path, const QBrush& brush) {
    QPainter& to = tilePainter();
    to.setPen(Qt::NoPen);
    to.setBrush(brush);
    to.drawPath(path);
    changed_ |= DirtyPen | DirtyBrush;
}

// A polyline leaves its being open behind in Qt's stroker, dashes follow it, and another path's stroke ends
// it, or not: where it is invisible or of single lines. So Qt strokes a path of no length for each that it is
// not given.
void TrimmingEngine::strokeNothingOf(const QPainterPath& path) {
    const QPointF first = path.elementAt(0);
    QPainterPath nothing(first);
    addLine(first, nothing);
    addLine(first, nothing);
    tilePainter().drawPath(nothing);
}

void TrimmingEngine::drawPath(const QPainterPath& path) {
    draw(path, mayBeRoundedRect(path), [&] { tilePainter().drawPath(path); });
}

void TrimmingEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    if (mode == PolylineMode) {
        hasPolyline_ = true;
        return tilePainter().drawPolyline(points, count);
    }
    const Qt::FillRule rule = mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill;
    const auto asItIs = [&] { tilePainter().drawPolygon(points, count, rule); };
    constexpr int kMostPoints = 0xffff;  // Qt cuts areas of more in two
    if (count == 0 || count > kMostPoints) return asItIs();
    const bool isRect = mayBeRect(points, count);
    if (isRect && state->pen().style() != Qt::NoPen) return asItIs();
    QPainterPath path(points[0]);
    for (int i = 1; i < count; ++i) addLine(points[i], path);
    addLine(points[0], path);
    path.setFillRule(rule);
    draw(path, isRect, asItIs);
}

// A shape's line comes alone.
void TrimmingEngine::drawLines(const QLineF* lines, int count) {
    const QPen& pen = state->pen();
    if (count == 1 && !pen.isCosmetic() && !hasPolyline_) {
        const OutlineTrimmer trimmer(state->transform(), tile_, strokeRadius(pen, true));
        QPainterPath line(lines[0].p1());
        addLine(lines[0].p2(), line);
        const auto trimmed = trimmer.stroked(line);
        if (trimmed && trimmed->path.isEmpty()) return;
    }
    tilePainter().drawLines(lines, count);
}

// Filled, they are drawn in another way while a pen is laid aside whose gradient fits its shape, be it of no
// width: that is not told. So near one the tile is given up.
void TrimmingEngine::drawRects(const QRectF* rects, int count) {
    if (state->pen().style() != Qt::NoPen) return tilePainter().drawRects(rects, count);
    for (int i = 0; i < count; ++i) {
        QPainterPath path;
        path.addRect(rects[i]);
        draw(path, true, [&] { tilePainter().drawRects(rects + i, 1); });
    }
}

void TrimmingEngine::drawEllipse(const QRectF& rect) {
    QPainterPath path;
    path.addEllipse(rect);
    draw(path, false, [&] { tilePainter().drawEllipse(rect); });
}

}  // namespace

bool isTrimmingProven() {
    constexpr std::string_view kVersion = "6.4.";
    return isComputedAlike() && std::string_view(qVersion()).substr(0, kVersion.size()) == kVersion;
}

bool renderTrimmed(QSvgRenderer& renderer, const TileView& view, QPainter& painter) {
    const QSize tile(painter.device()->width(), painter.device()->height());
    TrimmingEngine engine(painter, tile);
    ProbeDevice device(tile, engine);
    QPainter telling(&device);
    renderer.setViewBox(view.viewBox);
    renderer.render(&telling, view.target);
    return !engine.hasGivenUp();
}

}  // namespace tzsvg
