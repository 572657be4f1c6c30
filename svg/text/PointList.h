// The reader of "points", the attribute of "polygon" and "polyline".
#pragma once

#include <QPointF>
#include <QStringView>
#include <QVector>

namespace tzsvg {

// Reads pairs "x,y" separated by white space; the list is empty for text without pairs. False, with an empty
// list, when a part is not exactly one pair (10 20, or 10, 20: this strictness is meant, what
// was refused stays refused; PointList/table pins it) or a coordinate
// comes out infinite or not a number. What is not a number counts as 0. Units are not read.
bool readPointList(QStringView text, QVector<QPointF>& points);

}  // namespace tzsvg
