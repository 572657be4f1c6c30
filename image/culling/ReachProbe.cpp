#include "image/culling/ReachProbe.h"

#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

#include "image/StrokeReach.h"

namespace tzsvg {

void ReachProbe::drawPath(const QPainterPath& path) {
    add(path, state->brush().style() != Qt::NoBrush);
}

void ReachProbe::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    QPainterPath path;
    if (count > 0) path.moveTo(points[0]);
    for (int i = 1; i < count; ++i) path.lineTo(points[i]);
    if (count > 0 && mode != PolylineMode) path.lineTo(points[0]);
    add(path, mode != PolylineMode && state->brush().style() != Qt::NoBrush);
}

void ReachProbe::drawRects(const QRectF* rects, int count) {
    for (int i = 0; i < count; ++i) {
        const QRectF& r = rects[i];
        const std::array<QPointF, 4> corners = {r.topLeft(), r.topRight(), r.bottomRight(), r.bottomLeft()};
        drawPolygon(corners.data(), static_cast<int>(corners.size()), OddEvenMode);
    }
}

void ReachProbe::drawEllipse(const QRectF& rect) {
    QPainterPath path;
    path.addEllipse(rect);
    if (path.isEmpty()) {
        drawRects(&rect, 1);
    } else {
        drawPath(path);
    }
}

void ReachProbe::drawLines(const QLineF* lines, int count) {
    for (int i = 0; i < count; ++i) {
        const std::array<QPointF, 2> ends = {lines[i].p1(), lines[i].p2()};
        drawPolygon(ends.data(), static_cast<int>(ends.size()), PolylineMode);
    }
}

void ReachProbe::drawPoints(const QPointF* points, int count) {
    for (int i = 0; i < count; ++i) drawPolygon(points + i, 1, PolylineMode);
}

void ReachProbe::drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*from*/) {
    addUnknown();
}

void ReachProbe::drawImage(const QRectF& /*to*/, const QImage& /*image*/, const QRectF& /*from*/,
                           Qt::ImageConversionFlags /*flags*/) {
    addUnknown();
}

void ReachProbe::drawTextItem(const QPointF& /*at*/, const QTextItem& /*text*/) {
    addUnknown();
}

bool ReachProbe::isMeasurable(const QTransform& t, const QPointF& p) const {
    return std::abs(t.m11() * p.x()) + std::abs(t.m21() * p.y()) + std::abs(t.dx()) <= largest_ &&
           std::abs(t.m12() * p.x()) + std::abs(t.m22() * p.y()) + std::abs(t.dy()) <= largest_;
}

bool ReachProbe::measure(const QPainterPath& path, bool fills, Box& reach) const {
    const QTransform& t = state->transform();
    const QPen& pen = state->pen();
    const bool strokes = pen.style() != Qt::NoPen && pen.brush().style() != Qt::NoBrush;
    if (path.elementCount() == 0 || (!fills && !strokes)) return true;
    // Widths that stay when the drawing is enlarged. One pixel is what smooth edges take.
    if (!t.isAffine() || (strokes && pen.isCosmetic() && pen.widthF() > 1.0)) return false;
    if (strokes && !strokeIsTold(path)) return false;
    const bool isOneLine = path.elementCount() == 2 && path.elementAt(1).isLineTo();
    const double radius = strokes && !pen.isCosmetic() ? strokeRadius(pen, isOneLine) : 0.0;
    return addBox(path, t, radius, reach);
}

bool ReachProbe::addBox(const QPainterPath& path, const QTransform& t, double radius, Box& box) const {
    Box own;
    for (int i = 0; i < path.elementCount(); ++i) own.add(Box::of(QPointF(path.elementAt(i)), radius));
    const std::array<QPointF, 4> corners = {QPointF(own.left, own.top), QPointF(own.right, own.top),
                                            QPointF(own.right, own.bottom), QPointF(own.left, own.bottom)};
    for (const QPointF& corner : corners) box.add(Box::of(t.map(corner), 0.0));
    return std::all_of(corners.begin(), corners.end(),
                       [&](const QPointF& corner) { return isMeasurable(t, corner); });
}

}  // namespace tzsvg
