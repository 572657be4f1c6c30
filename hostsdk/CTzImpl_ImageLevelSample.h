// The implementation base of images that are read by level: an image overrides the protected operations,
// which may throw; counting and queries come from CTzPolymorph. The base keeps the level count and refuses
// levels beyond it.
#pragma once

#include <utility>

#include "hostsdk/CTzError.h"
#include "hostsdk/ITzImage.h"

class CTzImpl_ImageLevelSample : public ITzImageLevelSample {
  public:
    TzResult sampleLevelCount(uint32_t* count) noexcept final {
        if (!count) return kTzInvalidArgument;
        *count = levelCount_;
        return kTzOk;
    }
    TzResult sampleLevelSize(uint32_t level, TzSize* out) noexcept final {
        if (!out) return kTzInvalidArgument;
        return atLevel(level, [&] { *out = levelOfSamples(level); });
    }
    TzResult samplePixel(uint32_t level, uint32_t x, uint32_t y, TzPixelType type, void* out) noexcept final {
        return sampleLine(level, x, y, 1, type, out);
    }
    TzResult sampleLine(uint32_t level, uint32_t x, uint32_t y, uint32_t count, TzPixelType type,
                        void* out) noexcept final {
        if (!out) return kTzInvalidArgument;
        return atLevel(level, [&] { readSamples(level, x, y, count, type, out); });
    }

  protected:
    explicit CTzImpl_ImageLevelSample(uint32_t levelCount) : levelCount_(levelCount) {}
    virtual ~CTzImpl_ImageLevelSample() = default;

    uint32_t sampleLevels() const { return levelCount_; }

    // Level 0 is the coarsest; `level` is below the level count.
    virtual TzSize levelOfSamples(uint32_t level) const = 0;
    // One pixel is a line of one.
    virtual void readSamples(uint32_t level, uint32_t x, uint32_t y, uint32_t count, TzPixelType type,
                             void* out) = 0;

  private:
    template <class Work>
    TzResult atLevel(uint32_t level, Work&& work) const noexcept {
        return level < levelCount_ ? tzGate(std::forward<Work>(work)) : kTzOutOfBounds;
    }

    uint32_t levelCount_;
};
