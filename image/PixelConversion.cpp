// QColor widens a channel to 16 bits and divides by 65535, which is c / 255: 256 values,
// worked out once. PixelConversion/equalsQColor compares them all.
#include "image/PixelConversion.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace tzsvg {
namespace {

constexpr std::array<float, 256> channelValues() {
    std::array<float, 256> values{};
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>(i * 0x101U) / static_cast<float>(0xFFFFU);
    return values;
}

constexpr std::array<float, 256> kChannelValues = channelValues();

}  // namespace

void toRgbaFloats(const QRgb* pixels, int count, float* out) {
    // Most pixels are as the one before.
    QRgb last = 0;
    std::array<float, 4> values{};
    for (const QRgb* const end = pixels + count; pixels != end; ++pixels, out += 4) {
        if (const QRgb pixel = *pixels; pixel != last) {
            values = {kChannelValues[(pixel >> 16U) & 0xFFU], kChannelValues[(pixel >> 8U) & 0xFFU],
                      kChannelValues[pixel & 0xFFU], kChannelValues[pixel >> 24U]};
            last = pixel;
        }
        std::memcpy(out, values.data(), sizeof values);
    }
}

}  // namespace tzsvg
