// Which part of the document a tile shows, and where in the tile. Called by TileRenderer; pure.
#pragma once

#include <QRectF>
#include <optional>

#include "image/LevelTable.h"

namespace tzsvg {

// A piece of the document and its place in the tile.
struct TileView {
    QRectF viewBox;  // in the document's view box units
    QRectF target;   // in the tile's pixels; never empty
};

// The view of a tile whose place has passed LevelTable::requireTile(); `ownViewBox` is the document's own
// view box. Nothing when the tile stays transparent.
std::optional<TileView> tileView(const LevelTable& levels, const TileKey& tile, const QRectF& ownViewBox);

// Whether tileView() can have an answer, whatever the view box: where it cannot, no renderer is needed.
bool touchesDocument(const LevelTable& levels, const TileKey& tile);

}  // namespace tzsvg
