// Strokes as areas: for strokes painted with gradients, which the import drops, and strokes under a matrix
// that stretches unevenly, which a width cannot say.
#pragma once

#include <cstdint>
#include <vector>

#include "normalize/geometry/Path.h"

namespace tznormalize {

enum class LineCap : uint8_t { kButt, kRound, kSquare };
enum class LineJoin : uint8_t { kMiter, kRound, kBevel };

// Lengths in the path's space.
struct StrokeForm {
    double width = 1.0;
    LineCap cap = LineCap::kButt;
    LineJoin join = LineJoin::kMiter;
    double miterLimit = 4.0;
    std::vector<double> dashes;  // empty for none; not negative, of a sum above 0
    double dashOffset = 0.0;
};

// The area that a stroke covers, to be filled by the non-zero rule; made by QPainterPathStroker. In the
// path's space: the caller maps it. Empty when nothing is drawn.
Path strokeOutline(const Path& path, const StrokeForm& form);

// How far it is from a dash to that after which all begins anew.
double dashPeriod(const std::vector<double>& dashes);

// About how many dashes Qt's painter makes of a line. Of a straight piece with very many it makes none.
double dashCount(const Path& path, const std::vector<double>& dashes);

}  // namespace tznormalize
