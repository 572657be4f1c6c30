#include "bench/exact/RandomGeometry.h"

#include <cstdio>

namespace tzbench {

uint32_t RandomGeometry::below(uint32_t bound) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<uint32_t>(state_ >> 33U) % bound;
}

// Mostly inside, sometimes far outside; now and then on the seams between tiles.
double RandomGeometry::spread() {
    if (chance(12)) return below(17) / 16.0;
    if (far_ && chance(10)) return (unit() - 0.5) * 30;
    return unit() * 1.2 - 0.1;
}

double RandomGeometry::size() {
    const double side = width_ > height_ ? width_ : height_;
    return side * (chance(40) ? unit() : unit() * unit() * 0.06);
}

std::string RandomGeometry::number(double value) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.9g", value);
    return buffer;
}

std::string RandomGeometry::color() {
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "#%06x", below(1U << 24U));
    return buffer;
}

std::string RandomGeometry::transform() {
    std::string out;
    const uint32_t steps = 1 + below(3);
    for (uint32_t i = 0; i < steps; ++i) {
        switch (below(5)) {
            case 0:
                out += "translate(" + number(size() - size()) + "," + number(size() - size()) + ") ";
                break;
            case 1:
                out += "scale(" + number(0.5 + unit()) + ") ";
                break;
            case 2:
                out += "rotate(" + number(unit() * 360) + " " + number(x()) + " " + number(y()) + ") ";
                break;
            case 3:
                out += "skewX(" + number(unit() * 40) + ") ";
                break;
            default:
                out +=
                    "matrix(1 " + number(unit() * 0.2) + " 0 -1 0 " + number(2 * originY_ + height_) + ") ";
        }
    }
    return out;
}

std::string RandomGeometry::points() {
    std::string out;
    const uint32_t count = 1 + below(6);
    const double left = x();
    const double top = y();
    for (uint32_t i = 0; i < count; ++i)
        out += number(left + size() - size()) + "," + number(top + size()) + " ";
    return out;
}

std::string RandomGeometry::pathData() {
    std::string out = "M" + number(x()) + "," + number(y());
    const uint32_t steps = below(7);
    const auto step = [&] { return number(size() - size()) + "," + number(size() - size()) + " "; };
    for (uint32_t i = 0; i < steps; ++i) {
        switch (below(8)) {
            case 0:
                out += " l" + step();
                break;
            case 1:
                out += " h" + number(size()) + "v" + number(size());
                break;
            case 2:
                out += " c" + step() + step() + step();
                break;
            case 3:
                out += " q" + step() + step();
                break;
            case 4:
                out += " a" + number(size()) + "," + number(size()) + " " + number(unit() * 90) + " " +
                       pick({"0", "1"}) + "," + pick({"0", "1"}) + " " + step();
                break;
            case 5:
                out += " z m" + step();
                break;
            case 6:
                if (chance(6)) out += " L" + number(x()) + "," + number(y());
                break;
            default:
                out += chance(3) ? " z" : " s" + step() + step();
        }
    }
    return out;
}

}  // namespace tzbench
