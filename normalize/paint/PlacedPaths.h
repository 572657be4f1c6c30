// What the box of an object is measured by: outlines and where they stand.
#pragma once

#include <optional>
#include <vector>

#include "normalize/geometry/Matrix.h"
#include "normalize/geometry/Path.h"

namespace tznormalize {

// An outline in its own space, and the matrix from there to the page.
struct PlacedPath {
    Path path;
    Matrix ctm;
};

// The outlines of one object: a view, which must not outlive what it looks at.
class PlacedPaths {
  public:
    PlacedPaths() = default;
    explicit PlacedPaths(const std::vector<PlacedPath>& paths, size_t from = 0)
        : first_(paths.data() + from), last_(paths.data() + paths.size()) {}

    // Of an object that is one outline.
    explicit PlacedPaths(const PlacedPath& one) : first_(&one), last_(&one + 1) {}

    bool isEmpty() const { return first_ == last_; }

    // The box of what they cover, curves as they run, in the space that `space` maps to the page; nothing
    // when there are none or when the space is flat.
    std::optional<Box> boxIn(const Matrix& space) const;

  private:
    const PlacedPath* first_ = nullptr;
    const PlacedPath* last_ = nullptr;
};

}  // namespace tznormalize
