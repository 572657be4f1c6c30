#include "image/painting/LineCut.h"

#include <algorithm>

namespace tzsvg {
namespace {

// The points that are looked at begin that far from the rows.
constexpr int64_t kBeyond = 17 * kRasterUnits;

// Lines that are no longer than this beyond the rows stay as they are.
constexpr int64_t kFar = 1024 * kRasterUnits;

int64_t flooredQuotient(int64_t number, int64_t by) {  // by > 0
    const int64_t quotient = number / by;
    return number % by < 0 ? quotient - 1 : quotient;
}

// From its upper end to its lower one.
class Line {
  public:
    explicit Line(const RasterLine& line) : from_(line[0]), to_(line[1]) {}

    int64_t height() const { return to_.y - from_.y; }
    int64_t width() const { return to_.x - from_.x; }

    // The point nearest to the line of those at so many 64ths of a pixel from y on, up or down.
    RasterPoint nearest(int64_t y, int64_t count, bool isUp) const {
        const int64_t number = (y - from_.y) * width();
        int64_t x = flooredQuotient(number, height());
        int64_t rest = number - x * height();
        const int64_t way = isUp ? -width() : width();
        const int64_t step = flooredQuotient(way, height());
        const int64_t restOfStep = way - step * height();
        RasterPoint best{};
        int64_t least = height();
        for (int64_t i = 0; i < count && least > 0; ++i) {
            const int64_t distance = std::min(rest, height() - rest);
            if (distance < least) {
                least = distance;
                best = {from_.x + x + (distance == rest ? 0 : 1), isUp ? y - i : y + i};
            }
            x += step;
            rest += restOfStep;
            if (rest >= height()) {
                rest -= height();
                ++x;
            }
        }
        return best;
    }

    bool has(int64_t row) const { return from_.y <= row * kRasterUnits && row * kRasterUnits <= to_.y; }

    // In 256ths of a pixel.
    int64_t xAtRow(int64_t row) const {
        constexpr int64_t kFiner = 4;
        return from_.x * kFiner +
               flooredQuotient((row * kRasterUnits - from_.y) * kFiner * width(), height());
    }

  private:
    RasterPoint from_;
    RasterPoint to_;
};

// Whether they cross the rows of the tile at the same places.
bool isAlike(const Line& a, const Line& b, int64_t rows) {
    for (int64_t row = 0; row <= rows; ++row) {
        if (b.has(row) && a.xAtRow(row) != b.xAtRow(row)) return false;
    }
    return true;
}

}  // namespace

std::optional<RasterLine> cutToRows(const RasterLine& whole, int rows) {
    const bool isDown = whole[0].y < whole[1].y;
    const RasterLine down = isDown ? whole : RasterLine{whole[1], whole[0]};
    const Line line(down);
    const int64_t above = -kBeyond;
    const int64_t below = rows * kRasterUnits + kBeyond;
    const bool isFarAbove = down[0].y < above - kFar;
    const bool isFarBelow = down[1].y > below + kFar;
    if (!isFarAbove && !isFarBelow) return std::nullopt;
    constexpr int64_t kMost = kFar;
    for (int64_t count = kMost / 32; count <= kMost; count *= 2) {
        const RasterLine cut = {isFarAbove ? line.nearest(above, count, true) : down[0],
                                isFarBelow ? line.nearest(below, count, false) : down[1]};
        const Line shorter(cut);
        if (isAlike(line, shorter, rows)) return isDown ? cut : RasterLine{cut[1], cut[0]};
    }
    return std::nullopt;
}

}  // namespace tzsvg
