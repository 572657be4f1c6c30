// Whether a point can stand in a painter path: the toolkit drops points that are not finite, or 1e128 and
// more away, without a word. Checked by everything that builds paths.
#pragma once

#include <QPointF>
#include <cmath>

namespace tzsvg {

inline bool fitsPainterPath(const QPointF& point) {
    constexpr double kLimit = 1e128;
    return std::abs(point.x()) < kLimit && std::abs(point.y()) < kLimit;  // false for not-a-number, too
}

}  // namespace tzsvg
