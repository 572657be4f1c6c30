#include "host/scene/MeshData.h"

#include <algorithm>
#include <limits>

#include "hostsdk/CTzError.h"

namespace tzhost {
namespace {

constexpr uint32_t kMostOfList = std::numeric_limits<uint32_t>::max();

// x - x is 0 for a finite number and NaN for any other.
bool isFinite(const TzPoint& point) {
    return (point.x - point.x) + (point.y - point.y) + (point.z - point.z) == 0;
}

}  // namespace

uint32_t MeshData::addPoints(const TzPoint* points, uint32_t count) {
    if (!std::all_of(points, points + count, isFinite)) throw CTzError(kTzInvalidArgument);
    const uint32_t first = pointCount();
    if (count > kMostOfList - first) throw CTzError(kTzOutOfMemory);
    points_.append(points, count);
    if (first == 0 && count > 0) lower_ = upper_ = points[0];
    include(points, count);
    return first;
}

uint32_t MeshData::addPolygon(TzTagId type, const uint32_t* points, uint32_t count, TagRun tags) {
    if (polygons_.size() == kMostOfList) throw CTzError(kTzOutOfMemory);
    const uint64_t firstVertex = vertices_.size();
    vertices_.append(points, count);
    polygons_.push_back({type, count, firstVertex, tags});
    return polygonCount() - 1;
}

bool MeshData::pointsExist(const uint32_t* points, uint32_t count) const {
    const uint32_t end = pointCount();
    return std::all_of(points, points + count, [end](uint32_t point) { return point < end; });
}

const Polygon& MeshData::polygon(uint32_t index) const {
    if (index >= polygons_.size()) throw CTzError(kTzOutOfBounds);
    return polygons_[index];
}

void MeshData::setTag(uint32_t polygon, TzTagId id, std::string_view text) {
    if (polygon >= polygons_.size()) throw CTzError(kTzOutOfBounds);
    tagArena_.set(polygons_[polygon].tags, id, text);
}

void MeshData::copyPoints(uint32_t first, uint32_t count, TzPoint* out) const {
    if (uint64_t{first} + count > points_.size()) throw CTzError(kTzOutOfBounds);
    points_.copy(first, count, out);
}

void MeshData::copyVertices(const Polygon& polygon, uint32_t first, uint32_t count, uint32_t* out) const {
    if (uint64_t{first} + count > polygon.vertexCount) throw CTzError(kTzOutOfBounds);
    vertices_.copy(polygon.firstVertex + first, count, out);
}

TzBox MeshData::bounds() const {
    return {lower_, upper_, {upper_.x - lower_.x, upper_.y - lower_.y, upper_.z - lower_.z}};
}

void MeshData::include(const TzPoint* points, uint32_t count) {
    TzPoint lower = lower_;
    TzPoint upper = upper_;
    for (const TzPoint* point = points; point != points + count; ++point) {
        lower = {std::min(lower.x, point->x), std::min(lower.y, point->y), std::min(lower.z, point->z)};
        upper = {std::max(upper.x, point->x), std::max(upper.y, point->y), std::max(upper.z, point->z)};
    }
    lower_ = lower;
    upper_ = upper;
}

}  // namespace tzhost
