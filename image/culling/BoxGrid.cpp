#include "image/culling/BoxGrid.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tzsvg {
namespace {

// On average.
constexpr size_t kBoxesOfCell = 8;

constexpr uint32_t kMostAcross = 512;

// A box in more cells is looked at for every area.
constexpr uint32_t kMostCellsOfBox = 16;

}  // namespace

BoxGrid::BoxGrid(const std::vector<SmallBox>& boxes, float side) {
    while (across_ < kMostAcross && size_t{across_} * across_ * kBoxesOfCell < boxes.size()) across_ *= 2;
    cellSide_ = side / static_cast<float>(across_);
    starts_.resize(size_t{across_} * across_ + 1);
    const auto isLarge = [&](const SmallBox& box) { return cellsOf(box).count() > kMostCellsOfBox; };
    for (const SmallBox& box : boxes) {
        if (!isLarge(box)) forEach(cellsOf(box), [&](uint32_t cell) { ++starts_[cell]; });
    }
    // From the ends of the cells' lists backwards, boxes being taken from the last.
    std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
    numbers_.resize(starts_.back());
    for (size_t i = boxes.size(); i-- > 0;) {
        const auto number = static_cast<uint32_t>(i);
        if (isLarge(boxes[i])) {
            large_.push_back(number);
        } else {
            forEach(cellsOf(boxes[i]), [&](uint32_t cell) { numbers_[--starts_[cell]] = number; });
        }
    }
    std::reverse(large_.begin(), large_.end());
}

std::optional<std::vector<uint32_t>> BoxGrid::near(const SmallBox& area) const {
    const Cells cells = cellsOf(area);
    constexpr size_t kLargePart = 8;
    if (cells.count() * kLargePart > size_t{across_} * across_) return std::nullopt;
    std::vector<uint32_t> found;
    forEach(cells, [&](uint32_t cell) {
        found.insert(found.end(), numbers_.begin() + starts_[cell], numbers_.begin() + starts_[cell + 1]);
    });
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    const auto middle = static_cast<std::ptrdiff_t>(found.size());
    found.insert(found.end(), large_.begin(), large_.end());
    std::inplace_merge(found.begin(), found.begin() + middle, found.end());
    return found;
}

BoxGrid::Cells BoxGrid::cellsOf(const SmallBox& box) const {
    const auto index = [&](float at) {
        return static_cast<uint32_t>(
            std::clamp(std::floor(at / cellSide_), 0.0F, static_cast<float>(across_ - 1)));
    };
    return {index(box.left), index(box.top), index(box.right), index(box.bottom)};
}

}  // namespace tzsvg
