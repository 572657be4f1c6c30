// The implementation base of images: an image overrides the protected operations, which may throw; counting
// and queries come from CTzPolymorph.
#pragma once

#include "hostsdk/CTzError.h"
#include "hostsdk/ITzImage.h"

class CTzImpl_Image : public ITzImage {
  public:
    TzResult size(TzSize* out) noexcept final {
        if (!out) return kTzInvalidArgument;
        return tzGate([&] { *out = imageSize(); });
    }
    TzResult format(TzPixelFormat* out) noexcept final {
        if (!out) return kTzInvalidArgument;
        return tzGate([&] { *out = imageFormat(); });
    }
    TzResult readPixel(uint32_t x, uint32_t y, TzPixelType type, void* out) noexcept final {
        return readLine(x, y, 1, type, out);
    }
    TzResult readLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) noexcept final {
        if (!out) return kTzInvalidArgument;
        return tzGate([&] { readImageLine(x, y, count, type, out); });
    }

  protected:
    CTzImpl_Image() = default;
    virtual ~CTzImpl_Image() = default;

    virtual TzSize imageSize() const = 0;
    virtual TzPixelFormat imageFormat() const = 0;
    // One pixel is a line of one.
    virtual void readImageLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) = 0;
};
