// Measures where the shapes of a drawing may paint by having Qt draw them on a probe: whatever styles,
// inheritance, units and transforms make of a shape is in it. Called by CellRenderers, once per drawing.
#pragma once

#include <QRectF>
#include <QSvgRenderer>
#include <optional>

#include "image/culling/DrawingParts.h"
#include "image/culling/PartReach.h"

namespace tzsvg {

// `area`: the drawing's view box, as far as it can be seen; `whole`: a renderer of the whole drawing, whose
// view box is changed. Nothing when the drawing cannot be measured. What else has to be loaded is loaded a
// piece at a time, so that no second whole drawing is in memory.
std::optional<PartReach> measureReach(const DrawingParts& drawing, const QRectF& area, QSvgRenderer& whole);

}  // namespace tzsvg
