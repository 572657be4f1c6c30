// The points of the mesh being written, by their identifiers, in single precision.
#pragma once

#include <QVector3D>
#include <cstdint>
#include <vector>

#include "hostsdk/TzTypes.h"

namespace tzsvg {

// Ordered by identifier. Identifiers count from 0 and come in order, so that a vector is the map.
class PointCache {
  public:
    void clear() { points_.clear(); }

    // Adds a point. A second visit of an identifier keeps the first entry.
    void add(uint32_t identifier, const TzPoint& position) {
        if (identifier < points_.size()) return;
        points_.resize(identifier);
        points_.emplace_back(static_cast<float>(position.x), static_cast<float>(position.y),
                             static_cast<float>(position.z));
    }

    size_t size() const { return points_.size(); }
    const QVector3D& operator[](size_t identifier) const { return points_[identifier]; }

  private:
    std::vector<QVector3D> points_;
};

}  // namespace tzsvg
