#include "normalize/geometry/Box.h"

namespace tznormalize {

bool Box::intersects(const Box& other) const {
    return left <= other.right && other.left <= right && top <= other.bottom && other.top <= bottom;
}

void join(std::optional<Box>& box, const std::optional<Box>& other) {
    if (!other) return;
    if (!box) {
        box = other;
        return;
    }
    box->add({other->left, other->top});
    box->add({other->right, other->bottom});
}

std::optional<Box> intersection(const Box& one, const Box& other) {
    if (!one.intersects(other)) return std::nullopt;
    return Box{std::max(one.left, other.left), std::max(one.top, other.top), std::min(one.right, other.right),
               std::min(one.bottom, other.bottom)};
}

Box mapped(const Box& box, const Matrix& matrix) {
    const Point corner = matrix.map({box.left, box.top});
    Box out{corner.x, corner.y, corner.x, corner.y};
    out.add(matrix.map({box.right, box.top}));
    out.add(matrix.map({box.right, box.bottom}));
    out.add(matrix.map({box.left, box.bottom}));
    return out;
}

}  // namespace tznormalize
