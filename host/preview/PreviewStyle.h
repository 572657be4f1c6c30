// How a polygon is drawn in a preview, made of its presentation properties; defaults are those of SVG.
// Used by Preview.cpp.
#pragma once

#include <QBrush>
#include <QPen>

#include "host/preview/PreviewProperties.h"
#include "host/preview/definitions/PreviewGradients.h"
#include "host/preview/definitions/PreviewPictures.h"

namespace tzhost {

// What paints are looked up in, and where the shape stands that they are for.
struct PaintSource {
    const PreviewDefinitions& definitions;
    PreviewPictures& pictures;
    PaintPlace place;
    double pixels = 1.0;  // to a unit of the painter's coordinates
    double units = 1.0;   // of the painter's coordinates to a scene unit
};

// A paint that a preview cannot draw becomes a translucent grey.
QBrush fillBrush(const Properties& properties, const PaintSource& source);

// Lengths with an absolute unit are in metres, as the geometry is.
QPen strokePen(const Properties& properties, const PaintSource& source);

Qt::FillRule fillRule(const Properties& properties);

}  // namespace tzhost
