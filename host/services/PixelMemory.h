// The memory of images' pixels. Used by the image service.
#pragma once

#include <cstddef>
#include <memory>

namespace tzhost {

// Zeroed memory of that size; throws std::bad_alloc. Any thread.
//
// Tiles are what a host has most of and makes all the time. Those of 256 by 256 pixels share huge pages, two
// to a page: a tile's 256 ordinary pages take longer to come than simple drawings take to draw.
std::shared_ptr<char> makePixelMemory(size_t size);

}  // namespace tzhost
