// How a polygon is drawn in a preview, read from its presentation tags; defaults are those of SVG.
// Used by Preview.cpp.
#pragma once

#include <QBrush>
#include <QPen>

#include "host/preview/PreviewGradients.h"
#include "host/scene/Tags.h"

namespace tzhost {

struct ShapeStyle {
    QBrush brush;
    QPen pen;
    Qt::FillRule fillRule = Qt::WindingFill;
    double opacity = 1.0;
};

// `scale` is pixels per scene unit; lengths with an absolute unit are in metres, as the geometry is. A paint
// that a preview cannot draw (a pattern) becomes a translucent grey.
ShapeStyle readStyle(const TagRun& tags, const PreviewGradients& gradients, double scale);

}  // namespace tzhost
