// How far from a path its stroke may lie. Used by culling and trimming.
#pragma once

#include <QPen>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace tzsvg {

// No length is enlarged more than that.
inline double largestScale(const QTransform& t) {
    return std::sqrt(t.m11() * t.m11() + t.m12() * t.m12() + t.m21() * t.m21() + t.m22() * t.m22());
}

// In the path's own units.
inline double strokeRadius(const QPen& pen, bool isOneLine) {
    const bool hasMiters =
        !isOneLine && (pen.joinStyle() == Qt::MiterJoin || pen.joinStyle() == Qt::SvgMiterJoin);
    return pen.widthF() * std::max(1.0, hasMiters ? pen.miterLimit() : 1.0);
}

}  // namespace tzsvg
