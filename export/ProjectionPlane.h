// The points of the mesh being written, the plane that they lie in, and the way from there to the document.
#pragma once

#include <QPointF>
#include <QVector3D>
#include <cstdint>
#include <vector>

#include "hostsdk/TzTypes.h"

namespace tzsvg {

// The points of a mesh by their identifiers, in single precision. Identifiers count from 0 and come in order,
// so that a vector is the map.
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

// The axis that the plane is normal to.
enum class PlaneAxis : uint32_t { kNone = 0, kZ = 1, kX = 2, kY = 3 };

// The plane through the first three points, in the order of their identifiers, that span one; kNone when
// there are none such, or their plane is not normal to an axis.
PlaneAxis findProjectionPlane(const PointCache& points);

// The two coordinates of a position in a plane: horizontal and vertical, y still upwards.
inline QPointF planeCoordinates(PlaneAxis axis, double x, double y, double z) {
    switch (axis) {
        case PlaneAxis::kZ:
            return {x, y};
        case PlaneAxis::kX:
            return {y, z};
        default:
            return {z, x};
    }
}

// The mapping of a mesh's points to the document: into the plane, and y turned about the flip height.
class Projection {
  public:
    Projection() = default;
    Projection(PlaneAxis axis, double flipHeight);

    QPointF map(const QVector3D& position) const {
        const QPointF point =
            planeCoordinates(axis_, static_cast<double>(position.x()), static_cast<double>(position.y()),
                             static_cast<double>(position.z()));
        return {point.x(), flipHeight_ - point.y()};
    }

  private:
    PlaneAxis axis_ = PlaneAxis::kNone;
    int32_t flipHeight_ = 0;
};

}  // namespace tzsvg
