// Draws one tile. Called by CSVGImage on whatever thread asks for the tile; each call has its own renderer,
// image and painter.
#pragma once

#include <QImage>

#include "image/LevelTable.h"
#include "image/RendererPool.h"

namespace tzsvg {

struct DrawnTile {
    QImage pixels;          // of the level's full tile size, ARGB32 with straight alpha
    uint64_t document = 0;  // the number of the document that it shows
    // How it was drawn; the pixels are the same.
    bool isOfCell = false;   // only the shapes around it were
    bool isTrimmed = false;  // without the pieces of outlines that it does not see
};

// A file that does not load at present gives a transparent tile. Throws std::bad_alloc.
DrawnTile drawTile(const LevelTable& levels, const TileKey& tile, RendererPool& renderers);

}  // namespace tzsvg
