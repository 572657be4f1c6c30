#include "image/trimming/RectShapes.h"

#include <cmath>

namespace tzsvg {
namespace {

bool isAlmost(const QPointF& a, const QPointF& b, double unit) {
    constexpr double kRounding = 1e-6;
    return std::abs(a.x() - b.x()) <= kRounding * unit && std::abs(a.y() - b.y()) <= kRounding * unit;
}

}  // namespace

bool mayBeRoundedRect(const QPainterPath& path) {
    constexpr int kFewest = 5;  // corners without a radius
    constexpr int kMost = 18;
    if (path.elementCount() < kFewest || path.elementCount() > kMost) return false;
    const QRectF box = path.controlPointRect();
    const QPointF first = path.elementAt(0);
    const QPointF corner = path.elementAt(1).isCurveTo() ? QPointF(path.elementAt(3)) : box.topLeft();
    QPainterPath rounded;
    rounded.addRoundedRect(box, std::abs(corner.x() - first.x()), std::abs(corner.y() - first.y()));
    if (rounded.elementCount() != path.elementCount()) return false;
    const double unit = std::abs(box.left()) + std::abs(box.top()) + box.width() + box.height();
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).type != rounded.elementAt(i).type ||
            !isAlmost(path.elementAt(i), rounded.elementAt(i), unit))
            return false;
    }
    return true;
}

bool mayBeRect(const QPointF* points, int count) {
    constexpr int kCorners = 4;
    if (count != kCorners && count != kCorners + 1) return false;
    for (int i = 1; i < kCorners; ++i) {
        if (points[i].x() != points[i - 1].x() && points[i].y() != points[i - 1].y()) return false;
    }
    return true;
}

}  // namespace tzsvg
