// The implementation base of tiled images: an image overrides the protected operations, which may throw;
// counting and queries come from CTzPolymorph. The base keeps the level count and refuses levels beyond it.
#pragma once

#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzImage.h"

class CTzImpl_TileImage : public ITzTileImage {
  public:
    TzResult tileLevelCount(uint32_t* count) noexcept final {
        if (!count) return kTzInvalidArgument;
        *count = levelCount_;
        return kTzOk;
    }
    TzResult tileLevelSize(uint32_t level, TzTileLevel* out) noexcept final {
        if (!out) return kTzInvalidArgument;
        return atLevel(level, [&] { *out = levelOfTiles(level); });
    }
    TzResult tile(uint32_t level, TzTilePlace place, ITzImage** out) noexcept final {
        if (!out) return kTzInvalidArgument;
        *out = nullptr;
        return atLevel(level, [&] { *out = tileAt(level, place).detach(); });
    }
    TzResult tileSize(uint32_t level, TzTilePlace place, TzSize* out) noexcept final {
        if (!out) return kTzInvalidArgument;
        return atLevel(level, [&] { *out = tileSizeAt(level, place); });
    }
    TzResult tileOfPixel(uint32_t level, uint32_t x, uint32_t y, TzTilePlace* out) noexcept final {
        if (!out) return kTzInvalidArgument;
        return atLevel(level, [&] { *out = tilePlaceOf(level, x, y); });
    }

  protected:
    explicit CTzImpl_TileImage(uint32_t levelCount) : levelCount_(levelCount) {}
    virtual ~CTzImpl_TileImage() = default;

    // Level 0 is the finest; `level` is below the level count.
    virtual TzTileLevel levelOfTiles(uint32_t level) const = 0;
    virtual CTzPtr<ITzImage> tileAt(uint32_t level, TzTilePlace place) = 0;
    virtual TzSize tileSizeAt(uint32_t level, TzTilePlace place) const = 0;
    virtual TzTilePlace tilePlaceOf(uint32_t level, uint32_t x, uint32_t y) const = 0;

  private:
    template <class Work>
    TzResult atLevel(uint32_t level, Work&& work) const noexcept {
        return level < levelCount_ ? tzGate(std::forward<Work>(work)) : kTzOutOfBounds;
    }

    uint32_t levelCount_;
};
