#include "image/StrokeReach.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "image/CubicCurve.h"

namespace tzsvg {
namespace {

// In radians: 150 degrees, by which half a width becomes 1.93 widths.
constexpr double kMostTurn = 2.618;
constexpr double kMostWidths = 2.0;

// The angle that holds the directions of the lines between a curve's control points. Those of any part of the
// curve are sums of these, so it holds them, too. Infinite when a line is so short that rounding decides
// where it goes.
double turnOf(const CubicCurve& points) {
    constexpr double kShortest = 1e-9;
    double direction = 0.0;  // from that of the first line
    double least = 0.0;
    double most = 0.0;
    QPointF before;
    for (size_t i = 1; i < points.size(); ++i) {
        const QPointF line = points.at(i) - points.at(i - 1);
        if (line.x() == 0.0 && line.y() == 0.0) continue;
        if (line.manhattanLength() < kShortest * points.at(i).manhattanLength()) return HUGE_VAL;
        if (!before.isNull()) {
            const double cross = before.x() * line.y() - before.y() * line.x();
            direction += std::atan2(cross, QPointF::dotProduct(before, line));
            least = std::min(least, direction);
            most = std::max(most, direction);
        }
        before = line;
    }
    return most - least;
}

// Qt moves the curve as a whole where what comes of it lies, at five points of it, as far away as it should,
// or nearly so; then no other point is more than two widths away. Or it moves parts of its halves.
bool turnsBack(const CubicCurve& curve) {
    const auto turnsLittle = [](const CubicCurve& c) { return turnOf(c) <= kMostTurn; };
    if (turnsLittle(curve)) return false;
    const std::array<CubicCurve, 2> halves = halvesOf(curve);
    return !turnsLittle(halves[0]) || !turnsLittle(halves[1]);
}

}  // namespace

double largestScale(const QTransform& t) {
    return std::sqrt(t.m11() * t.m11() + t.m12() * t.m12() + t.m21() * t.m21() + t.m22() * t.m22());
}

double strokeRadius(const QPen& pen, bool isOneLine) {
    if (isOneLine) return pen.widthF();
    const bool hasMiters = pen.joinStyle() == Qt::MiterJoin || pen.joinStyle() == Qt::SvgMiterJoin;
    return pen.widthF() * std::max(kMostWidths, hasMiters ? pen.miterLimit() : 0.0);
}

bool strokeIsTold(const QPainterPath& path) {
    for (int i = 0; i < path.elementCount(); ++i) {
        if (!path.elementAt(i).isCurveTo()) continue;
        if (turnsBack(
                {path.elementAt(i - 1), path.elementAt(i), path.elementAt(i + 1), path.elementAt(i + 2)}))
            return false;
        i += 2;
    }
    return true;
}

}  // namespace tzsvg
