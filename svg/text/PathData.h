// The reader of path data, the "d" attribute of "path".
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QStringView>
#include <cmath>

namespace tzsvg {

// Reads path data into a painter path; empty text gives an empty path. False, with an empty path, when a
// number or flag inside a command does not scan, a number has no command to belong to, or a coordinate comes
// out too large for Qt (1e128). Letters that are no command are skipped.
bool parsePathData(QStringView text, QPainterPath& path);

// Whether a point can stand in a painter path: Qt drops points that are not finite, or 1e128 and more away,
// without a word. Checked by everything that builds paths.
inline bool fitsPainterPath(const QPointF& point) {
    constexpr double kLimit = 1e128;
    return std::abs(point.x()) < kLimit && std::abs(point.y()) < kLimit;  // false for not-a-number, too
}

}  // namespace tzsvg
