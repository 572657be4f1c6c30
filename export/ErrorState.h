// What went wrong in a save, as the saver's steps tell it.
#pragma once

#include <cstdint>

namespace tzsvg {

enum class ErrorState : uint32_t {
    kNone = 0,
    kRoot = 2,         // the stored root element could not be used
    kDefinitions = 3,  // the stored definitions could not be used
    kClipPaths = 4,    // the stored clip paths could not be used
    kGroups = 5,       // the stored group records could not be used
    kIllustrator = 6,  // the stored Illustrator data could not be used
    kPolygon = 9,      // a polygon could not be written
};

}  // namespace tzsvg
