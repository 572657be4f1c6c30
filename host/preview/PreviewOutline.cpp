#include "host/preview/PreviewOutline.h"

#include <cmath>
#include <functional>
#include <utility>

namespace tzhost {
namespace {

// Paths of fewer polygons are drawn as they are.
constexpr uint32_t kFewPolygons = 1024;

// Of polygons that lie exactly on each other so many are drawn, and one more where the even-odd rule would
// have an odd number. With the other rule one is as good as many, but for as many that run the other way.
constexpr uint32_t kMostCopies = 32;

// Whether a curve is a straight line, run through evenly, to what can be seen: lines are much faster.
bool isLine(const QPointF& from, const QPointF& control1, const QPointF& control2, const QPointF& to) {
    constexpr double kPixels = 1.0 / 128;
    const QPointF off1 = from + (to - from) / 3 - control1;
    const QPointF off2 = to + (from - to) / 3 - control2;
    return std::abs(off1.x()) + std::abs(off1.y()) + std::abs(off2.x()) + std::abs(off2.y()) < kPixels;
}

}  // namespace

void PreviewOutline::add(const Polygon& polygon) {
    // Qt's rasterizer walks every line for each row of the picture that it crosses: a path that repeats
    // itself without end would take it as long.
    if (++polygons_ > kFewPolygons && ++copiesOf(polygon).count > kMostCopies) return;
    addSubPath(polygon);
}

void PreviewOutline::addSubPath(const Polygon& polygon) {
    const uint32_t count = polygon.vertexCount;
    if (count == 0) return;
    const auto at = [&](uint32_t i) { return view_.pixel(mesh_.point(mesh_.vertex(polygon, i))); };
    path_.moveTo(at(0));
    uint32_t i = 1;
    if (polygon.type == kTzPolygonBezier) {
        for (; i + 2 < count; i += 3) {
            if (isLine(at(i - 1), at(i), at(i + 1), at(i + 2))) {
                path_.lineTo(at(i + 2));
            } else {
                path_.cubicTo(at(i), at(i + 1), at(i + 2));
            }
        }
    }
    for (; i < count; ++i) path_.lineTo(at(i));
    if (count > 2 && at(0) == at(count - 1)) path_.closeSubpath();
}

PreviewOutline::Copies& PreviewOutline::copiesOf(const Polygon& polygon) {
    size_t hash = polygon.type;
    for (uint32_t i = 0; i < polygon.vertexCount; ++i) {
        const TzPoint& point = mesh_.point(mesh_.vertex(polygon, i));
        for (const double coordinate : {point.x, point.y}) {
            hash = (hash ^ std::hash<double>{}(coordinate)) * 0x9E3779B97F4A7C15U;
        }
    }
    Copies& copies = copies_[hash];
    copies.polygon = &polygon;
    return copies;
}

QPainterPath PreviewOutline::take() {
    for (const auto& [hash, copies] : copies_) {
        if (copies.count > kMostCopies && (copies.count - kMostCopies) % 2 != 0) addSubPath(*copies.polygon);
    }
    polygons_ = 0;
    copies_.clear();
    return std::exchange(path_, QPainterPath());
}

}  // namespace tzhost
