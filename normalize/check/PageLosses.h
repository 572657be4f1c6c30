// The page that comes back, and where the drawing lies on it.
#pragma once

#include "normalize/check/LossContext.h"

namespace tznormalize {

// Adds a finding when the page does not come back: the export makes it from the box of all points, with a
// margin, and its flip of the y axis is about the height of that box, the import's about the lowest point.
void checkPage(const LossContext& context);

}  // namespace tznormalize
