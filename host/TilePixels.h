// The pixels of a tile, as floats and as an 8-bit picture. Used by the commands that write tiles.
#pragma once

#include <QImage>
#include <string>
#include <vector>

#include "hostsdk/CTzUser_Image.h"

namespace tzhost {

// The tile's image; throws CTzError.
CTzUser_Image fetchTile(ITzTileImage& tiles, uint32_t level, TzTilePlace place);

// All pixels, red, green, blue, alpha each, row by row.
std::vector<float> readPixels(const CTzUser_Image& image);

// The part of that size from the top left pixel on, 8 bits a channel, straight alpha.
QImage readPicture(const CTzUser_Image& image, TzSize part);

// A whole level, through the level-sample interface.
QImage readLevel(ITzImageLevelSample& samples, uint32_t level, TzSize size);

// A picture as the bytes of a PNG file; throws CTzError.
std::string pngBytes(const QImage& picture);

}  // namespace tzhost
