#include "normalize/paint/PlacedPaths.h"

namespace tznormalize {

std::optional<Box> PlacedPaths::boxIn(const Matrix& space) const {
    const std::optional<Matrix> back = space.inverse();
    if (!back) return std::nullopt;
    std::optional<Box> box;
    for (const PlacedPath* one = first_; one != last_; ++one) {
        join(box, one->ctm == space ? one->path.tightBox() : one->path.mapped(*back * one->ctm).tightBox());
    }
    return box;
}

}  // namespace tznormalize
