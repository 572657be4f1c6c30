// The reader of path data, the "d" attribute of "path".
#pragma once

#include <QPainterPath>
#include <QString>

namespace tzsvg {

// Reads path data into a painter path; empty text gives an empty path. False, with an empty path, when a
// number or flag inside a command does not scan, a number has no command to belong to, or a coordinate comes
// out too large for the toolkit (1e128). Letters that are no command are skipped.
bool parsePathData(QStringView text, QPainterPath& path);

}  // namespace tzsvg
