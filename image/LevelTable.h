// The pyramid of an image, as numbers alone: level sizes, tile sizes, and where a pixel lies. Made once per
// image by CSVGImage; TileGeometry computes with it.
#pragma once

#include <array>

#include "hostsdk/ITzImage.h"

namespace tzsvg {

// The number of levels. Level keys count from the coarsest: key 0 is 1 by 1 pixel, and the long side of key k
// is 2^k pixels. The level-sample interface numbers its levels as the keys do, the tile interface the other
// way round. Meant so: hosts count each as its interface says, and would read the wrong level of a pyramid
// numbered one way. ImageTest/samplesReadTheTiles pins both.
constexpr uint32_t kLevelCount = 17;

constexpr uint32_t keyOfTileLevel(uint32_t level) {
    return kLevelCount - 1 - level;
}
constexpr uint32_t keyOfSampleLevel(uint32_t level) {
    return level;
}

// A tile: its level's key, column and row.
struct TileKey {
    uint32_t level;
    uint32_t column;
    uint32_t row;
};

class LevelTable {
  public:
    // For a document of that size in pixels; neither side is 0.
    explicit LevelTable(TzSize document);

    TzSize documentSize() const { return document_; }

    // The document's size, each side rounded up to a power of two.
    TzSize paddedSize() const { return padded_; }

    const TzTileLevel& level(uint32_t key) const { return levels_[key]; }

    // The finest level's size.
    TzSize imageSize() const { return {levels_.back().width, levels_.back().height}; }

    // How much of a tile belongs to its level; of a tile beyond the level, what the last one before it has,
    // or nothing. Meant so: it is the remainder of the level's side whenever the tile's end passes it, and
    // hosts ask for it with the bounds of requireTile(), which throws kTzOutOfBounds here, too.
    // LevelTable/bounds pins it.
    TzSize tileSize(const TileKey& tile) const;

    // Throws kTzOutOfBounds when the column is not below the tile width in pixels or the row not below the
    // tile height. Meant so, although the number of tiles is another: a level may have fewer columns than its
    // tile is wide, and tiles beyond the level are then served, transparent as a rule; and a long, narrow
    // level under 256 pixels has more tiles than can be had. LevelTable/bounds pins both.
    void requireTile(const TileKey& tile) const;

    // The tile that holds a pixel of a level. Throws kTzOutOfBounds for a pixel outside the level.
    TzTilePlace tileOfPixel(uint32_t key, uint32_t x, uint32_t y) const;

  private:
    TzSize document_;
    TzSize padded_;
    std::array<TzTileLevel, kLevelCount> levels_{};  // by key
};

// The next power of two above `side`, or `side` itself when it is one.
uint32_t paddedSide(uint32_t side);

}  // namespace tzsvg
