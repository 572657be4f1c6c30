// One opened drawing: the module's image, and its levels as OpenImageIO counts them. Any number of threads
// may ask it for tiles at once.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "adapters/openimageio/OpenOptions.h"
#include "adapters/openimageio/ProcessModule.h"

namespace tzoiio {

constexpr uint32_t kTileSide = 256;

class TiledDrawing {
  public:
    // Opens it with the process's module. Throws tzhost::OperationError.
    explicit TiledDrawing(const OpenOptions& options);
    ~TiledDrawing();
    TiledDrawing(const TiledDrawing&) = delete;
    TiledDrawing& operator=(const TiledDrawing&) = delete;

    // Level 0 is the one whose long side has the size that was asked for.
    int levelCount() const { return static_cast<int>(levels_.size()); }
    TzSize levelSize(int level) const { return levels_[static_cast<size_t>(level)].size; }

    // Writes kTileSide * kTileSide pixels of 4 bytes, sRGB, straight alpha or associated: the tile whose top
    // left pixel is (x, y), which are multiples of kTileSide inside the level. Transparent beyond the level.
    // Throws CTzError.
    void readTile(int level, uint32_t x, uint32_t y, bool associated, uint8_t* pixels) const;

  private:
    struct Level {
        uint32_t tileLevel;  // of the module's tiles
        TzSize size;
        TzTileLevel tiles;
        bool isServed;  // whether the module has tiles up to its end
    };

    void readRows(const Level& level, uint32_t x, uint32_t y, bool associated, uint8_t* pixels) const;
    std::vector<float> wholeLevel(const Level& level) const;
    Level moduleLevel(uint32_t tileLevel) const;

    OpenedDrawing opened_;
    mutable std::atomic<bool> isRead_{false};
    uint32_t moduleLevels_ = 0;
    std::vector<Level> levels_;
};

}  // namespace tzoiio
