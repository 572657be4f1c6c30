// The memory of images' pixels. Used by the image service.
#pragma once

#include <cstddef>
#include <memory>

namespace tzhost {

// Zeroed memory of that size; throws std::bad_alloc. Any thread.
//
// Tiles are what a host has most of and makes all the time, and mapping the pages of one takes longer than
// simple drawings take to draw: some that were given back are kept for the next ones.
std::shared_ptr<char> makePixelMemory(size_t size);

}  // namespace tzhost
