// What a program asks for when it opens a drawing: in the name behind a "?", in the configuration, or in the
// environment, in this order of precedence.
#pragma once

#include <OpenImageIO/imageio.h>

#include <string>

namespace tzoiio {

// Sizes are powers of two, as the levels' long sides are.
constexpr uint32_t kLargestSize = 65'536;
// Many programs read all of the largest level, which at 65,536 pixels would be 17 gigabytes.
constexpr uint32_t kDefaultSize = 4'096;

struct OpenOptions {
    std::string file;
    uint32_t size = kDefaultSize;  // long side of the largest level, in pixels
    bool normalize = true;
    bool unassociatedAlpha = false;
};

// Throws std::invalid_argument, whose text names the option: an unknown one, or a value that cannot be.
//
//     name             configuration             environment             values
//     ?size=N          svg:size                  TZSVG_OIIO_SIZE         1 to 65536, a power of two
//     ?normalize=N     svg:normalize             TZSVG_OIIO_NORMALIZE    0 or 1
//                      oiio:UnassociatedAlpha                            0 or 1
OpenOptions readOpenOptions(const std::string& name, const OIIO::ImageSpec& config);

// The name without what stands behind a "?".
std::string fileOf(const std::string& name);

}  // namespace tzoiio
