// 8-bit pixels to the four floats that host images take. Called by CSVGImage for every rendered tile.
#pragma once

#include <QtGui/qrgb.h>

namespace tzsvg {

// Converts `count` straight-alpha ARGB32 pixels to red, green, blue, alpha, each 0 to 1: exactly the values
// that QColor's redF() and so on give.
void toRgbaFloats(const QRgb* pixels, int count, float* out);

}  // namespace tzsvg
