// The reader of "points", the attribute of "polygon" and "polyline".
#pragma once

#include <QPointF>
#include <QStringView>
#include <QVector>

namespace tzsvg {

// Reads pairs "x,y" separated by white space; the list is empty for text without pairs. False, with an empty
// list, when a part is not exactly one pair or a coordinate comes out infinite or as NaN. Text that is not a
// number counts as 0. Units are not read. So "10 20" and "10, 20" are refused. Meant so: drawings that were
// refused stay refused; PointList/table pins it.
bool readPointList(QStringView text, QVector<QPointF>& points);

}  // namespace tzsvg
