// Places along a path, for text that follows one.
#pragma once

#include <optional>
#include <vector>

#include "normalize/geometry/Path.h"

namespace tznormalize {

// A path measured once: its length, and where a distance along it leads. Sub-paths follow one another.
class PathLength {
  public:
    explicit PathLength(const Path& path);

    double total() const { return corners_.empty() ? 0.0 : corners_.back().distance; }

    struct Spot {
        Point point;
        double direction;  // in degrees, as Matrix::rotation() turns
    };
    // Nothing off the path's ends.
    std::optional<Spot> at(double distance) const;

  private:
    // Curves are followed by lines.
    struct Corner {
        Point point;
        double distance;  // from the start, gaps between sub-paths left out
        bool isStart;     // of a sub-path
    };
    void lineTo(const Point& point);

    std::vector<Corner> corners_;
};

}  // namespace tznormalize
