// The plane that a mesh lies in, and the way from its points to the document's. Called once for each mesh,
// and for each vertex.
#pragma once

#include <QPointF>
#include <QVector3D>
#include <cstdint>

#include "export/PointCache.h"

namespace tzsvg {

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
