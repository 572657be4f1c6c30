// Paths changed so that what is lost on the way through an import is not seen.
#pragma once

#include "normalize/geometry/Path.h"

namespace tznormalize {

class Grid;

// With all points on the grid, and without segments that have no length then: what the path's text says.
Path onGrid(const Path& path, const Grid& grid);

// Without moves that nothing is drawn from, and closings of nothing.
Path withoutLoneMoves(Path path);

// Sub-paths whose points all round to one become lines of `length`, at least two grid steps: a round or
// square cap shows there, and the import drops what has no length. `step` is the grid's.
Path withDots(Path path, double length, double step);

bool hasClosing(const Path& path);
bool isClosedThroughout(const Path& path);  // every sub-path

// Closed sub-paths run on past their start, and are open then: a closing is lost on the way, and the seam
// would show where its join was. They run on by `length` (half the stroke's width), at least two grid steps;
// those that are smooth at the start stay closed, unless the stroke is dashed.
Path runOn(const Path& path, double length, double step, bool isDashed);

}  // namespace tznormalize
