// Lengths: a number with a unit or a percentage, in user units of 1/96 inch.
#pragma once

#include <QStringView>
#include <cstdint>
#include <optional>

namespace tznormalize {

// Which extent of the viewport a percentage is of.
enum class Axis : uint8_t { kHorizontal, kVertical, kNeither };

// The innermost viewport around an element, in its user units: what percentages are of.
struct Viewport {
    double width = 0.0;
    double height = 0.0;

    double extent(Axis axis) const;  // for kNeither the diagonal over the square root of two
};

// Reads a length: px, pt, pc, mm, cm, in, em, ex, %, or no unit. Nothing for text that is none: the
// caller knows what holds then. `fontSize` in user units.
std::optional<double> readLength(QStringView text, Axis axis, const Viewport& viewport, double fontSize);

}  // namespace tznormalize
