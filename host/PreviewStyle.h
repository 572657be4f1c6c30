// How a polygon is drawn in a preview, read from its presentation tags; what a tag does not say is as in SVG.
// Used by Preview.cpp.
#pragma once

#include <QBrush>
#include <QPen>

#include "host/TagRun.h"

namespace tzhost {

struct ShapeStyle {
    QBrush brush;
    QPen pen;
    Qt::FillRule fillRule = Qt::WindingFill;
    double opacity = 1.0;
};

// `scale` is pixels for one unit. Paint that a preview cannot have (a gradient, a pattern) becomes a neutral,
// translucent grey.
ShapeStyle readStyle(const TagRun& tags, double scale);

}  // namespace tzhost
