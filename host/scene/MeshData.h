// The points and polygons of one mesh, compactly. Filled by the mesh interface and by the scene file reader;
// read by the interface, the scene file writer and the preview. Plain data: no locks, no interfaces.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/scene/ChunkedArray.h"
#include "host/scene/Tags.h"
#include "hostsdk/TzTypes.h"

namespace tzhost {

struct Polygon {
    TzTagId type = 0;
    uint32_t vertexCount = 0;
    uint64_t firstVertex = 0;
    TagRun tags;
};

class MeshData {
  public:
    // Points with finite coordinates, or kTzInvalidArgument is thrown and none is added. Returns the first
    // one's index.
    uint32_t addPoints(const TzPoint* points, uint32_t count);

    // A polygon over points by index; the indices are not checked (see pointsExist). `tags` must be in this
    // mesh's arena.
    uint32_t addPolygon(TzTagId type, const uint32_t* points, uint32_t count, TagRun tags = {});

    bool pointsExist(const uint32_t* points, uint32_t count) const;

    // Both throw kTzOutOfBounds when there is no such polygon.
    const Polygon& polygon(uint32_t index) const;
    void setTag(uint32_t polygon, TzTagId id, std::string_view text);
    TagArena& tagArena() { return tagArena_; }

    // Copy a range out; throw kTzOutOfBounds when it passes the end.
    void copyPoints(uint32_t first, uint32_t count, TzPoint* out) const;
    void copyVertices(const Polygon& polygon, uint32_t first, uint32_t count, uint32_t* out) const;

    uint32_t pointCount() const { return static_cast<uint32_t>(points_.size()); }
    uint32_t polygonCount() const { return static_cast<uint32_t>(polygons_.size()); }
    const TzPoint& point(uint32_t index) const { return points_[index]; }
    // Vertex i of a polygon, as a point's index; i is below its vertexCount.
    uint32_t vertex(const Polygon& polygon, uint32_t i) const { return vertices_[polygon.firstVertex + i]; }

    // The box around all points; all zero when there are none.
    TzBox bounds() const;

  private:
    void include(const TzPoint* points, uint32_t count);

    ChunkedArray<TzPoint> points_;
    ChunkedArray<uint32_t> vertices_;
    ChunkedArray<Polygon> polygons_;
    TagArena tagArena_;
    TzPoint lower_{};
    TzPoint upper_{};
};

}  // namespace tzhost
