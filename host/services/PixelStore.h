// The pixels of an image, as bytes for as long as these say exactly what was written. Used by the image
// service.
#pragma once

#include <memory>
#include <shared_mutex>

#include "hostsdk/ITzImage.h"

namespace tzhost {

// Pixels go in and out as four floats each and come out bit for bit as they went in. Most images are drawn
// with 8 bits a channel, and every value is i / 255: those are kept in a quarter of the memory. From the
// first value on that no byte stands for, an image is kept as floats.
//
// All that is asked for lies within the image. Threads: as ITzImage and ITzImageWriter promise; rectangles
// that do not overlap may be written at once, and nobody reads meanwhile.
class PixelStore {
  public:
    // All values are 0. Throws std::bad_alloc.
    explicit PixelStore(TzSize size);

    TzSize size() const { return size_; }

    // `values` holds the rows of the rectangle without gaps, at any address. Throws std::bad_alloc when there
    // is no room for floats: each pixel of the rectangle is then as before or as in `values`.
    void write(uint32_t x, uint32_t y, TzSize rectangle, const void* values);

    // `count` pixels of row y from column x on.
    void read(uint32_t x, uint32_t y, uint32_t count, void* values) const;

  private:
    bool writeBytes(uint32_t x, uint32_t y, TzSize rectangle, const char* values);
    void writeFloats(uint32_t x, uint32_t y, TzSize rectangle, const char* values);
    void becomeFloats();
    size_t valuesBefore(uint32_t x, uint32_t y) const;

    const TzSize size_;
    // One of the two. Who writes shares the lock; who exchanges them has it alone.
    std::shared_mutex lock_;
    std::shared_ptr<char> bytes_;
    std::shared_ptr<char> floats_;
};

}  // namespace tzhost
