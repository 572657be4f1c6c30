// Tiles as PNG files, for pyramids: drawings without the row filters that Qt's writer tries out. Those are
// for photographs: they made the tiles of drawings larger, if anything, and took most of a pyramid's time.
// libdeflate compresses them in half the time of zlib.
#pragma once

#include <QImage>
#include <string>

namespace tzhost {

// The bytes of a PNG file of that picture, 8 bits a channel with straight alpha; throws CTzError.
std::string pngBytes(const QImage& picture);

}  // namespace tzhost
