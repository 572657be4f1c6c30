// Boxes along the axes. What may cover nothing at all is a std::optional<Box>; a box may be flat.
#pragma once

#include <algorithm>
#include <optional>

#include "normalize/geometry/Matrix.h"

namespace tznormalize {

struct Box {
    double left = 0.0;
    double top = 0.0;  // y grows downwards
    double right = 0.0;
    double bottom = 0.0;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
    bool hasArea() const { return right > left && bottom > top; }
    bool intersects(const Box& other) const;  // touching counts
    Box grownBy(double margin) const {
        return {left - margin, top - margin, right + margin, bottom + margin};
    }

    void add(const Point& point) {
        left = std::min(left, point.x);
        top = std::min(top, point.y);
        right = std::max(right, point.x);
        bottom = std::max(bottom, point.y);
    }

    // The matrix from the unit square to this box, for objectBoundingBox units.
    Matrix fromUnit() const { return {width(), 0.0, 0.0, height(), left, top}; }
};

// The box around both.
void join(std::optional<Box>& box, const std::optional<Box>& other);

// What both cover; nothing when they do not touch.
std::optional<Box> intersection(const Box& one, const Box& other);

// The box around a mapped box.
Box mapped(const Box& box, const Matrix& matrix);

}  // namespace tznormalize
