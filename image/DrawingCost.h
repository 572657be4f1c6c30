// What a loaded drawing makes the painter do, measured by drawing it once with a painter that only looks:
// whatever styles, uses, entities and units make of a drawing is in it. Called for every renderer that is
// loaded.
#pragma once

class QSvgRenderer;

namespace tzsvg {

struct PaintSurvey {
    bool isWithinLimits = true;  // kMaxDashesOfPath, kMaxDashes
    bool isTold = true;          // of all shapes, by what a paint device of ours is told to draw
};
PaintSurvey surveyPaint(QSvgRenderer& renderer);

}  // namespace tzsvg
