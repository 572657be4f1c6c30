// The service ITzImageService: images in the host's memory, as modules fill them.
#include <algorithm>
#include <memory>

#include "host/services/PixelStore.h"
#include "host/services/Services.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzServices.h"

namespace tzhost {
namespace {

constexpr size_t kBytesPerPixel = 4 * sizeof(float);

// Larger than any tile; a side of this length squared still counts in 64 bits.
constexpr uint32_t kLargestSide = 1U << 20U;

class HostImage : public HostObject, public ITzImage, public ITzImageWriter {
  public:
    TzResult size(TzSize* out) noexcept override {
        return onAnyThread("ITzImage::size", [&] {
            if (!out) throw CTzError(kTzInvalidArgument);
            *out = pixels_.size();
        });
    }

    TzResult format(TzPixelFormat* out) noexcept override {
        return onAnyThread("ITzImage::format", [&] {
            if (!out) throw CTzError(kTzInvalidArgument);
            *out = kTzFormatRgbaFloat;
        });
    }

    TzResult readPixel(uint32_t x, uint32_t y, TzPixelType type, void* out) noexcept override {
        return onAnyThread("ITzImage::readPixel", [&] { read(x, y, 1, type, out); });
    }

    TzResult readLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) noexcept override {
        return onAnyThread("ITzImage::readLine", [&] { read(x, y, count, type, out); });
    }

    TzResult writeRows(uint32_t x, uint32_t y, TzSize rectangle, TzPixelType type, const void* pixels,
                       uint64_t byteCount) noexcept override {
        return onAnyThread("ITzImageWriter::writeRows", [&] {
            if (!pixels) throw CTzError(kTzInvalidArgument);
            if (type != kTzPixelRgbaFloat) throw CTzError(kTzNotSupported);
            requireInside(x, y, rectangle);
            if (byteCount != uint64_t{rectangle.width} * rectangle.height * kBytesPerPixel)
                throw CTzError(kTzInvalidArgument);
            pixels_.write(x, y, rectangle, pixels);
        });
    }

  protected:
    HostImage(std::shared_ptr<HostCore> core, TzSize size)
        : HostObject(std::move(core), "image"), pixels_(size) {}
    ~HostImage() = default;

  private:
    void requireInside(uint32_t x, uint32_t y, TzSize rectangle) const {
        const TzSize size = pixels_.size();
        if (x > size.width || y > size.height || rectangle.width > size.width - x ||
            rectangle.height > size.height - y) {
            throw CTzError(kTzOutOfBounds);
        }
    }

    void read(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) const {
        if (!out) throw CTzError(kTzInvalidArgument);
        if (type != kTzPixelRgbaFloat) throw CTzError(kTzNotSupported);
        requireInside(x, y, {count, 1});
        pixels_.read(x, y, count, out);
    }

    PixelStore pixels_;
};

class ImageService : public HostObject, public ITzImageService {
  public:
    explicit ImageService(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzImageService") {}

    TzResult createImage(TzSize size, TzPixelFormat format, ITzImage** out) noexcept override {
        if (out) *out = nullptr;
        return onAnyThread("ITzImageService::createImage", [&] {
            if (!out || size.width == 0 || size.height == 0) throw CTzError(kTzInvalidArgument);
            if (format != kTzFormatRgbaFloat) throw CTzError(kTzNotSupported);
            if (std::max(size.width, size.height) > kLargestSide) throw CTzError(kTzOutOfMemory);
            *out = CTzPolymorph<HostImage, ITzImage, ITzImageWriter>::create(sharedCore(), size).detach();
        });
    }
};

}  // namespace

CTzPtr<ITzObject> makeImageService(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<ImageService, ITzImageService>::create(core).query<ITzObject>();
}

}  // namespace tzhost
