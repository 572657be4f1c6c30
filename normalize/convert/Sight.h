// What of the drawing can be seen: on the page, and within the clip paths around.
#pragma once

#include "normalize/convert/Conversion.h"

namespace tznormalize {

// Whether something drawn cannot be seen, so that it is better left out: it would widen the view box. `box`
// is that of its points on the page, and its stroke reaches over it by `reach`. Never so in definitions, nor
// under a filter, whose result may reach elsewhere (`mayMove`: has one itself, or markers). What reaches over
// the page is told the conversion.
bool isOutOfSight(Conversion& conversion, const Box& box, double reach, bool mayMove, const Target& target);

// The box to cut an area in `box` down to, because it reaches far over the page and would widen the view box
// of the result; nothing when it does not, or when what it looks like elsewhere matters.
std::optional<Box> limitsFor(const Conversion& conversion, const Box& box, double reach, bool mayMove,
                             const Target& target);

// Whether an outline that stands at `place` cannot matter any more, because all will be converted again: it
// is not above what was drawn. Never so where its stroke may become an area, which reaches over the outline.
bool isWithinLift(const Conversion& conversion, const Path& path, const Place& place, const Target& target);

// [trap: coordinates from a million on leave the export with an exponent and cannot come back] Whether
// something as it was written reaches further than the result holds, with room for the move that puts nothing
// above 0.
bool isTooFar(const Box& box);

// The box outside of which nothing is seen that is clipped with "clip-path" of `place`; nothing when it
// cannot be told, or when there is none.
std::optional<Box> boxOfClip(Conversion& conversion, const Place& place);

}  // namespace tznormalize
