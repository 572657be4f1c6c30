// Areas and lines cut off at a box.
#pragma once

#include "normalize/geometry/Path.h"

namespace tznormalize {

// What of the area that `path` covers lies in `box`, by either fill rule; sub-paths count as closed. Where
// the area is cut, its outline runs along the box. Parts of curves that lie within stay curves. (Sutherland
// and Hodgman, edge by edge.)
Path cutToBox(const Path& path, const Box& box);

// What of the line that `path` draws lies in `box`: where it is cut, a sub-path ends and another begins.
Path cutLineToBox(const Path& path, const Box& box);

}  // namespace tznormalize
