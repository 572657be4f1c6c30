// Draws a tile's view without those pieces of outlines that the tile cannot see. Used by TileRenderer.
#pragma once

#include "image/TileGeometry.h"

class QPainter;
class QSvgRenderer;

namespace tzsvg {

// Whether it is sure to draw the same pixels, with this version of Qt and on this processor.
bool isTrimmingProven();

// As QSvgRenderer::render() does, for drawings of shapes alone (PaintSurvey). Gives up, false, when something
// near the tile cannot be drawn so; some of it may have been drawn then. The renderer's view box is set.
bool renderTrimmed(QSvgRenderer& renderer, const TileView& view, QPainter& painter);

}  // namespace tzsvg
