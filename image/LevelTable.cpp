// Plain arithmetic, in double precision throughout: the sizes are part of what scenes store.
#include "image/LevelTable.h"

#include <algorithm>
#include <cmath>

#include "hostsdk/CTzError.h"

namespace tzsvg {
namespace {

constexpr uint32_t kTileSide = 256;

uint32_t levelSide(uint32_t key, double factor) {
    const double side = std::ceil(std::ldexp(factor, static_cast<int>(key)));
    return std::max(1U, static_cast<uint32_t>(side));
}

uint32_t sideOfTile(uint32_t index, uint32_t tileSide, uint32_t levelSide) {
    const uint64_t end = (uint64_t{index} + 1) * tileSide;
    return end > levelSide ? levelSide % tileSide : tileSide;
}

}  // namespace

uint32_t paddedSide(uint32_t side) {
    if (side != 0 && (side & (side - 1)) == 0) return side;
    constexpr double kLn2 = 0.6931471805599453;
    return static_cast<uint32_t>(std::exp2(std::floor(std::log(static_cast<double>(side)) / kLn2) + 1.0));
}

LevelTable::LevelTable(TzSize document)
    : document_(document), padded_{paddedSide(document.width), paddedSide(document.height)} {
    const double aspect = static_cast<double>(document.height) / static_cast<double>(document.width);
    const bool tall = aspect >= 1.0;
    const double horizontal = tall ? 1.0 / aspect : 1.0;
    const double vertical = tall ? 1.0 : aspect;

    levels_[0] = {1, 1, 1, 1};
    for (uint32_t key = 1; key < kLevelCount; ++key) {
        const uint32_t width = levelSide(key, horizontal);
        const uint32_t height = levelSide(key, vertical);
        const uint32_t shorter = tall ? width : height;
        levels_[key] = {width, height, width >= kTileSide ? kTileSide : shorter,
                        height >= kTileSide ? kTileSide : shorter};
    }
}

TzSize LevelTable::tileSize(const TileKey& tile) const {
    requireTile(tile);
    const TzTileLevel& of = level(tile.level);
    return {sideOfTile(tile.column, of.tileWidth, of.width), sideOfTile(tile.row, of.tileHeight, of.height)};
}

void LevelTable::requireTile(const TileKey& tile) const {
    const TzTileLevel& of = level(tile.level);
    if (tile.column >= of.tileWidth || tile.row >= of.tileHeight) throw CTzError(kTzOutOfBounds);
}

TzTilePlace LevelTable::tileOfPixel(uint32_t key, uint32_t x, uint32_t y) const {
    const TzTileLevel& of = level(key);
    if (x >= of.width || y >= of.height) throw CTzError(kTzOutOfBounds);
    return {x / of.tileWidth, y / of.tileHeight};
}

}  // namespace tzsvg
