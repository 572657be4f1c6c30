// A long line through a tile, cut above and below it so that Qt's rasterizer computes the same numbers
// within. Qt follows a line over its whole length, once for each band of a tile. Used by OutlineTrimmer;
// pure.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace tzsvg {

constexpr int64_t kRasterUnits = 64;  // of a pixel

// In 64ths of a pixel, as Qt rounds an outline's points.
struct RasterPoint {
    int64_t x;
    int64_t y;
    bool operator==(const RasterPoint& other) const { return x == other.x && y == other.y; }
};
using RasterLine = std::array<RasterPoint, 2>;

// The line, without what is far above the first row of pixels or below the last; an end that is not far stays
// as it is. Of less than 2^24 pixels each way. Nothing when no part of it is far, or when no points are found
// for it to end at.
//
// Where a line enters and leaves a row of pixels is all that counts there (gray_render_line() in
// qgrayraster.c), and Qt computes that, in whole 256ths of a pixel, as the integer below the exact number. So
// the cut line must have the same integers, for all rows. Points that lie on the line exactly are too rare;
// the nearest of some thousand are near enough nearly always, which is looked at.
std::optional<RasterLine> cutToRows(const RasterLine& line, int rows);

}  // namespace tzsvg
