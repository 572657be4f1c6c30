// Boxes sorted into the cells of a grid, so that those near an area are found without a look at all. Used by
// PartReach; pure.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace tzsvg {

struct SmallBox {
    float left, top, right, bottom;

    bool touches(const SmallBox& other) const {
        return left <= other.right && other.left <= right && top <= other.bottom && other.top <= bottom;
    }
};

class BoxGrid {
  public:
    BoxGrid() = default;

    // A grid over the square from 0, 0 to `side`, `side`; what lies beyond counts to the cells at its edge.
    BoxGrid(const std::vector<SmallBox>& boxes, float side);

    // The numbers of the boxes that may touch the area, in order; nothing when that may be any.
    std::optional<std::vector<uint32_t>> near(const SmallBox& area) const;

  private:
    struct Cells {
        uint32_t left, top, right, bottom;  // the last ones included
        uint32_t count() const { return (right - left + 1) * (bottom - top + 1); }
    };

    Cells cellsOf(const SmallBox& box) const;

    // Calls use(cell) for each of the cells.
    template <class Use>
    void forEach(const Cells& cells, Use&& use) const {
        for (uint32_t row = cells.top; row <= cells.bottom; ++row) {
            for (uint32_t column = cells.left; column <= cells.right; ++column) use(row * across_ + column);
        }
    }

    uint32_t across_ = 1;  // cells in a row
    float cellSide_ = 0;
    std::vector<uint32_t> starts_;  // by cell, in numbers_; one more for the end
    std::vector<uint32_t> numbers_;
    std::vector<uint32_t> large_;  // of boxes that lie in many cells
};

}  // namespace tzsvg
