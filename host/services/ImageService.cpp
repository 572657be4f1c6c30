// The service ITzImageService: images in the host's memory, as modules fill them.
#include <algorithm>
#include <cstring>
#include <memory>

#include "host/services/PixelMemory.h"
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
            *out = size_;
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
            const size_t rowBytes = size_t{rectangle.width} * kBytesPerPixel;
            if (byteCount != rowBytes * rectangle.height) throw CTzError(kTzInvalidArgument);
            const char* source = static_cast<const char*>(pixels);
            // Full rows are contiguous on both sides: one copy.
            const uint32_t copies = rectangle.width == size_.width ? 1 : rectangle.height;
            const size_t bytes = copies == 1 ? static_cast<size_t>(byteCount) : rowBytes;
            for (uint32_t row = 0; row < copies; ++row, source += rowBytes) {
                std::memcpy(at(x, y + row), source, bytes);
            }
        });
    }

  protected:
    HostImage(std::shared_ptr<HostCore> core, TzSize size)
        : HostObject(std::move(core), "image"),
          size_(size),
          pixels_(makePixelMemory(size_t{size.width} * size.height * kBytesPerPixel)) {}
    ~HostImage() = default;

  private:
    void requireInside(uint32_t x, uint32_t y, TzSize rectangle) const {
        if (x > size_.width || y > size_.height || rectangle.width > size_.width - x ||
            rectangle.height > size_.height - y) {
            throw CTzError(kTzOutOfBounds);
        }
    }

    void read(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) const {
        if (!out) throw CTzError(kTzInvalidArgument);
        if (type != kTzPixelRgbaFloat) throw CTzError(kTzNotSupported);
        requireInside(x, y, {count, 1});
        std::memcpy(out, at(x, y), size_t{count} * kBytesPerPixel);
    }

    char* at(uint32_t x, uint32_t y) const {
        return pixels_.get() + (size_t{y} * size_.width + x) * kBytesPerPixel;
    }

    const TzSize size_;
    const std::shared_ptr<char> pixels_;
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
