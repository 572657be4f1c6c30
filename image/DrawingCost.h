// What a loaded drawing makes the painter do, measured by drawing it once with a painter that only looks:
// whatever styles, uses, entities and units make of a drawing is in it. Called for every renderer that is
// loaded.
#pragma once

#include <cstdint>

class QSvgRenderer;

namespace tzsvg {

// Whether the dashes of no path and of all paths together are more than these. The painter makes a path of
// its own of every dash, about 130 bytes each, so that a line across the page can ask for gigabytes.
constexpr int64_t kMaxDashesOfPath = int64_t{1} << 20;
constexpr int64_t kMaxDashes = int64_t{1} << 24;

struct PaintSurvey {
    bool isWithinLimits = true;
    // Nothing but areas of one colour each, half-transparent or not: no gradients, pictures, texts.
    bool isPlain = true;
};
PaintSurvey surveyPaint(QSvgRenderer& renderer);

}  // namespace tzsvg
