// The view box is shifted and cut in pixels of the document's size, not in units of its view box. Meant so: a
// document whose size and view box differ shows the top left piece of its view box that is as large as its
// size. TileGeometry/sizeAndViewBoxDiffer pins it.
#include "image/TileGeometry.h"

#include <algorithm>

namespace tzsvg {
namespace {

// One axis of a tile, in pixels of the document.
struct Axis {
    Axis(uint32_t documentSide, uint32_t levelSide, uint32_t tileSide, uint32_t index)
        : document(documentSide),
          scale(document / static_cast<double>(levelSide)),
          extent(static_cast<double>(tileSide) * scale),
          origin(static_cast<double>(index) * extent) {}

    bool startsInside() const { return origin <= document; }
    double overhang() const { return std::max(0.0, origin + extent - document); }

    double document;
    double scale;  // pixels of the document for one of the level
    double extent;
    double origin;
};

struct Axes {
    Axes(const LevelTable& levels, const TileKey& tile)
        : x(levels.documentSize().width, levels.level(tile.level).width, levels.level(tile.level).tileWidth,
            tile.column),
          y(levels.documentSize().height, levels.level(tile.level).height,
            levels.level(tile.level).tileHeight, tile.row) {}

    Axis x;
    Axis y;
};

bool isPadded(const LevelTable& levels) {
    return levels.paddedSize().width != levels.documentSize().width ||
           levels.paddedSize().height != levels.documentSize().height;
}

}  // namespace

bool touchesDocument(const LevelTable& levels, const TileKey& tile) {
    const Axes axes(levels, tile);
    return !isPadded(levels) || (axes.x.startsInside() && axes.y.startsInside());
}

std::optional<TileView> tileView(const LevelTable& levels, const TileKey& tile, const QRectF& ownViewBox) {
    if (!touchesDocument(levels, tile)) return std::nullopt;
    const auto [x, y] = Axes(levels, tile);
    // A document whose sides are powers of two ends where its last tiles end.
    const double overhangX = isPadded(levels) ? x.overhang() : 0.0;
    const double overhangY = isPadded(levels) ? y.overhang() : 0.0;
    const TzTileLevel& level = levels.level(tile.level);
    const TileView view{
        {ownViewBox.x() + x.origin, ownViewBox.y() + y.origin, x.extent - overhangX, y.extent - overhangY},
        {0.0, 0.0,
         static_cast<double>(level.tileWidth) - static_cast<double>(level.width) / x.document * overhangX,
         static_cast<double>(level.tileHeight) - static_cast<double>(level.height) / y.document * overhangY}};
    // The renderer takes an empty target for the whole device, and an empty view box for its own.
    if (view.target.isEmpty() || view.viewBox.isEmpty()) return std::nullopt;
    return view;
}

}  // namespace tzsvg
