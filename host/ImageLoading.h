// The image side of the host: has a file opened as an image by the first image loader that recognises it.
// Called by the commands that take drawings as images; tests and benchmarks call it as they do.
#pragma once

#include <string>
#include <vector>

#include "host/Drawing.h"
#include "host/Host.h"
#include "hostsdk/CTzUser_Image.h"
#include "hostsdk/ITzImageLoader.h"

namespace tzhost {

// What the loader said of the file when it recognised it.
struct RecognisedImage {
    uint32_t targetType = 0;
    uint32_t flags = 0;
    std::string formatName;
    TzImageTarget target{};
};

// An image and the interfaces that this host wants of it.
struct LoadedImage {
    Drawing drawing;  // kept: the image may read its file again
    RecognisedImage recognised;
    CTzUser_Image image;
    CTzPtr<ITzTileImage> tiles;
    CTzPtr<ITzImageLevelSample> samples;
};

// The image of a tile; throws CTzError. Level 0 is the finest.
CTzUser_Image fetchTile(ITzTileImage& tiles, uint32_t level, TzTilePlace place);

// All pixels of an image, red, green, blue, alpha each, row by row.
std::vector<float> readPixels(const CTzUser_Image& image);

// Values of pixels as bytes, to the nearest; also those that no module should give: out of range, not a
// number.
void toBytes(const float* values, size_t count, uint8_t* bytes);

// Throws OperationError: steps "open", "recognise" and "load".
LoadedImage loadImage(const Host& host, const Drawing& drawing);

}  // namespace tzhost
