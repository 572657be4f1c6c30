// The writer of line polygons: "polyline", "polygon" and "line" elements.
#pragma once

#include "export/ErrorState.h"

namespace tzsvg {

class SVGSaver;

// Writes the saver's current polygon, of the type `LINE`, as one element. kPolygon when it cannot be written;
// nothing is added then.
ErrorState writeLinePolygon(SVGSaver& saver);

}  // namespace tzsvg
