#include "image/painting/TileEngine.h"

#include <private/qpainter_p.h>
#include <private/qpainterpath_p.h>
#include <QImage>
#include <algorithm>
#include <cmath>

#include "image/StrokeReach.h"
#include "image/painting/FillPieces.h"

namespace tzsvg {
namespace {

OutlineView viewOf(const QVectorPath& path) {
    return {reinterpret_cast<const QPointF*>(path.points()), path.elements(), path.elementCount(),
            path.hasImplicitClose()};
}

// What is filled, and whether it is open, is as before; its shape is not.
QVectorPath pathOf(const Outline& outline, const QVectorPath& before) {
    constexpr uint kKept = QVectorPath::OddEvenFill | QVectorPath::WindingFill | QVectorPath::ExplicitOpen;
    return {reinterpret_cast<const qreal*>(outline.points.data()), static_cast<int>(outline.points.size()),
            outline.types.data(), (before.hints() & kKept) | QVectorPath::ArbitraryShapeHint};
}

}  // namespace

TileEngine::TileEngine(QImage& tile) : QRasterPaintEngine(&tile), tile_(tile.size()) {}

// Sets up the brush as the fill itself would, if it is not.
QSpanData& TileEngine::setUp(const QBrush& brush) {
    const QRasterPaintEngineState& of = *state();
    if (!qbrush_fast_equals(of.lastBrush, brush) || of.fillFlags) updateBrush(brush);
    return state()->brushData;
}

// Where in the tile's pixels it may paint, when that is no farther from the path than `by`.
QRectF TileEngine::reachOf(const QVectorPath& path, double by) const {
    return state()->matrix.mapRect(path.controlPointRect().adjusted(-by, -by, by, by));
}

// Whether there is enough beside the tile to be worth a look. Edges that are not smooth have another
// rasterizer.
bool TileEngine::isWorthTrimming(const QRectF& reach) const {
    constexpr double kFar = 128.0;
    return state()->renderHints.testFlag(QPainter::Antialiasing) &&
           !QRectF(QPointF(), tile_).adjusted(-kFar, -kFar, kFar, kFar).contains(reach);
}

std::optional<Outline> TileEngine::trimmed(const QVectorPath& path) const {
    const bool isSeen = state()->brushData.blend != nullptr;
    if (path.isEmpty() || path.shape() == QVectorPath::RectangleHint || !isSeen) return std::nullopt;
    const QRectF reach = reachOf(path, 0.0);
    if (!reach.intersects(QRectF(QPointF(), tile_)) || !isWorthTrimming(reach)) return std::nullopt;
    return OutlineTrimmer(state()->matrix, tile_, 0.0).filled(viewOf(path));
}

void TileEngine::fill(const QVectorPath& path, const QBrush& brush) {
    const FillPieces pieces(setUp(brush));
    const std::optional<Outline> outline = trimmed(path);
    if (!outline) return QRasterPaintEngine::fill(path, brush);
    hasTrimmed_ = true;
    if (!outline->isEmpty()) QRasterPaintEngine::fill(pathOf(*outline, path), brush);
}

// Whether Qt makes an outline of the stroke and fills it: neither dashes nor lines of a pixel, nor single
// lines.
bool TileEngine::isOutlined(const QVectorPath& path, const QPen& pen) const {
    constexpr double kPixels = 1.01;
    return pen.style() == Qt::SolidLine && !pen.isCosmetic() && path.shape() != QVectorPath::LinesHint &&
           pen.widthF() * scaleOf(state()->matrix) > kPixels;
}

// Qt's stroker takes points for the same that differ by a millionth of a millionth of their coordinates.
// Where these are so large that it is seen, other points far from the tile may move the stroke near it.
bool TileEngine::isSmall(const QVectorPath& path) const {
    constexpr double kMostPixels = 1U << 22U;
    const QRectF box = path.controlPointRect();
    const double most =
        std::max({std::abs(box.left()), std::abs(box.right()), std::abs(box.top()), std::abs(box.bottom())});
    return most * scaleOf(state()->matrix) < kMostPixels;
}

std::optional<Outline> TileEngine::thinned(const QVectorPath& path, const QPen& pen) const {
    if (path.isEmpty() || !isOutlined(path, pen) || !isSmall(path)) return std::nullopt;
    const double radius = strokeRadius(pen, false);
    if (!isWorthTrimming(reachOf(path, radius)) || !strokeIsTold(path.convertToPainterPath()))
        return std::nullopt;
    return OutlineTrimmer(state()->matrix, tile_, radius).stroked(viewOf(path));
}

// An open path, which is a polyline, leaves its being open behind in Qt's stroker, and dashes follow it,
// until another path is stroked. So it is stroked wherever it is, and so is the next path after it.
void TileEngine::stroke(const QVectorPath& path, const QPen& pen) {
    const std::optional<Outline> outline = thinned(path, pen);
    const bool isNear = !outline || !outline->isEmpty();
    if (!isNear && !path.hasExplicitOpen() && !isStrokerOpen_) return;
    if (outline && isNear) {
        QRasterPaintEngine::stroke(pathOf(*outline, path), pen);
    } else {
        QRasterPaintEngine::stroke(path, pen);
    }
    const bool isSeen = state()->penData.blend != nullptr;  // what is not is not stroked
    if (path.hasExplicitOpen()) {
        isStrokerOpen_ = true;
    } else if (isSeen && isOutlined(path, pen)) {
        isStrokerOpen_ = false;
    }
}

// Qt's own would not ask stroke(), here above.
void TileEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    const QVectorPath path(reinterpret_cast<const qreal*>(points), count, nullptr,
                           QVectorPath::polygonFlags(mode));
    const bool isFilled = state()->brush.style() != Qt::NoBrush || QVectorPath::isRect(path.points(), count);
    if (mode == PolylineMode || !isFilled) return stroke(path, state()->pen);
    QRasterPaintEngine::drawPolygon(points, count, mode);
}

// The brush is set up. Qt cuts areas of more points in two, and calls this for both.
void TileEngine::fillPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    constexpr int kMostPoints = 0xffff;
    const FillPieces pieces(state()->brushData);
    const QVectorPath path(reinterpret_cast<const qreal*>(points), count, nullptr,
                           QVectorPath::polygonFlags(mode));
    const std::optional<Outline> outline = count <= kMostPoints ? trimmed(path) : std::nullopt;
    if (!outline) return QRasterPaintEngine::fillPolygon(points, count, mode);
    hasTrimmed_ = true;
    if (!outline->isEmpty()) QRasterPaintEngine::fill(pathOf(*outline, path), state()->brush);
}

void TileEngine::drawRects(const QRectF* rects, int count) {
    const FillPieces pieces(setUp(state()->brush));
    QRasterPaintEngine::drawRects(rects, count);
}

}  // namespace tzsvg
