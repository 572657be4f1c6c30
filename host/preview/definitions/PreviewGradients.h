// The gradients that a drawing's definitions hold, as brushes for a preview. Used by PreviewStyle.cpp.
#pragma once

#include <QBrush>
#include <QRectF>
#include <QString>
#include <QTransform>
#include <optional>

#include "host/preview/definitions/PreviewDefinitions.h"

namespace tzhost {

// Where a shape stands that is painted.
struct PaintPlace {
    QRectF bounds;  // of its outline, in the painter's coordinates
    // From the drawing's own coordinates, y downwards, to the painter's. Nothing when a scene does not tell
    // where it has its drawing's coordinates.
    std::optional<QTransform> fromDrawing;
};

// The linear or radial gradient of that id, with the opacity of each stop multiplied; no brush when there is
// none. Of a gradient in the drawing's coordinates, where those are not known, only the direction is kept: it
// spans the bounds of the shape.
QBrush gradientBrush(const PreviewDefinitions& definitions, const QString& id, const PaintPlace& place,
                     double opacity);

}  // namespace tzhost
