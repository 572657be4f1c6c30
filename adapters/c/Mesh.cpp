// Meshes as flat arrays: out of the host's, and, looked at first, into it.
#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "adapters/c/Scene.h"
#include "adapters/c/Structs.h"
#include "host/core/Utf8.h"
#include "host/scene/Tags.h"
#include "hostsdk/CTzText.h"

namespace tzh {
namespace {

const tzhost::MeshData& meshOf(const TzhScene* scene, uint32_t item) {
    const tzhost::ItemData& data = itemOf(scene, item).data();
    require(data.isMesh(), "the item is no mesh");
    return data.mesh;
}

TzhMeshCounts countsOf(const tzhost::MeshData& mesh) {
    TzhMeshCounts counts{};
    counts.points = mesh.pointCount();
    counts.polygons = mesh.polygonCount();
    for (uint32_t i = 0; i < counts.polygons; ++i) {
        const tzhost::Polygon& polygon = mesh.polygon(i);
        counts.vertices += polygon.vertexCount;
        for (tzhost::TagReader tags(polygon.tags); tags.next();) {
            ++counts.tags;
            counts.text_bytes += tags.text().size();
        }
    }
    return counts;
}

// Stores where the caller wants it: nowhere for NULL.
template <class Value>
void put(Value* array, uint64_t index, Value value) {
    if (array) array[index] = value;
}

void readMesh(const tzhost::MeshData& mesh, const TzhMeshArrays& out) {
    for (uint32_t i = 0; out.points && i < mesh.pointCount(); ++i) {
        const TzPoint& point = mesh.point(i);
        double* const at = out.points + size_t{i} * 3;
        at[0] = point.x;
        at[1] = point.y;
        at[2] = point.z;
    }
    uint64_t vertex = 0;
    uint64_t tag = 0;
    uint64_t byte = 0;
    for (uint32_t i = 0; i < mesh.polygonCount(); ++i) {
        const tzhost::Polygon& polygon = mesh.polygon(i);
        put(out.polygon_types, i, polygon.type);
        put(out.vertex_starts, i, vertex);
        put(out.tag_starts, i, tag);
        if (out.vertices) mesh.copyVertices(polygon, 0, polygon.vertexCount, out.vertices + vertex);
        vertex += polygon.vertexCount;
        for (tzhost::TagReader tags(polygon.tags); tags.next(); ++tag) {
            put(out.tag_ids, tag, tags.id());
            put(out.text_starts, tag, byte);
            if (out.text) std::copy(tags.text().begin(), tags.text().end(), out.text + byte);
            byte += tags.text().size();
        }
    }
    put(out.vertex_starts, mesh.polygonCount(), vertex);
    put(out.tag_starts, mesh.polygonCount(), tag);
    put(out.text_starts, tag, byte);
}

// Refuses what a caller gave, by array and index.
[[noreturn]] void refuse(const char* array, uint64_t index, const char* reason) {
    throw Refused{TZH_INVALID, std::string(array) + "[" + std::to_string(index) + "]: " + reason};
}

void requireArray(const void* array, uint64_t length, const char* name) {
    if (!array && length > 0) throw Refused{TZH_INVALID, std::string(name) + ": missing"};
}

// Starts ascend from 0 to the number of what they divide.
void checkStarts(const uint64_t* starts, uint64_t count, uint64_t end, const char* name) {
    if (!starts && count == 0 && end == 0) return;
    requireArray(starts, 1, name);
    if (starts[0] != 0) refuse(name, 0, "is not 0");
    for (uint64_t i = 0; i < count; ++i) {
        if (starts[i + 1] < starts[i]) refuse(name, i + 1, "descends");
        if (starts[i + 1] > end) refuse(name, i + 1, "is beyond the end");
    }
    if (starts[count] != end) refuse(name, count, "does not reach the end");
}

void checkTags(const TzhMeshCounts& counts, const TzhMeshArrays& in) {
    requireArray(in.tag_ids, counts.tags, "tag_ids");
    requireArray(in.text, counts.text_bytes, "text");
    checkStarts(in.tag_starts, counts.polygons, counts.tags, "tag_starts");
    checkStarts(in.text_starts, counts.tags, counts.text_bytes, "text_starts");
    for (uint64_t i = 0; i < counts.tags; ++i) {
        if (!tzhost::isTagName(in.tag_ids[i])) refuse("tag_ids", i, "is not four ASCII characters");
        const std::string_view text(in.text + in.text_starts[i], in.text_starts[i + 1] - in.text_starts[i]);
        if (!tzhost::isUtf8(text)) refuse("text_starts", i, "its text is not UTF-8");
    }
    std::vector<uint32_t> ids;
    for (uint32_t polygon = 0; counts.tags > 0 && polygon < counts.polygons; ++polygon) {
        ids.assign(in.tag_ids + in.tag_starts[polygon], in.tag_ids + in.tag_starts[polygon + 1]);
        std::sort(ids.begin(), ids.end());
        if (std::adjacent_find(ids.begin(), ids.end()) != ids.end())
            refuse("tag_starts", polygon, "the polygon has a tag twice");
    }
}

void checkMesh(const TzhMeshCounts& counts, const TzhMeshArrays& in) {
    requireArray(in.points, counts.points, "points");
    requireArray(in.polygon_types, counts.polygons, "polygon_types");
    requireArray(in.vertices, counts.vertices, "vertices");
    const uint64_t coordinates = uint64_t{counts.points} * 3;
    for (uint64_t i = 0; i < coordinates; ++i) {
        if (!std::isfinite(in.points[i])) refuse("points", i, "is not finite");
    }
    for (uint64_t i = 0; i < counts.polygons; ++i) {
        if (!tzhost::isTagName(in.polygon_types[i]))
            refuse("polygon_types", i, "is not four ASCII characters");
    }
    checkStarts(in.vertex_starts, counts.polygons, counts.vertices, "vertex_starts");
    for (uint64_t i = 0; i < counts.polygons; ++i) {
        if (in.vertex_starts[i + 1] - in.vertex_starts[i] > std::numeric_limits<uint32_t>::max())
            refuse("vertex_starts", i, "the polygon has too many vertices");
    }
    for (uint64_t i = 0; i < counts.vertices; ++i) {
        if (in.vertices[i] >= counts.points) refuse("vertices", i, "there is no such point");
    }
    checkTags(counts, in);
}

// What fits beside what the mesh has.
void checkRoom(const tzhost::MeshData& mesh, const TzhMeshCounts& counts) {
    constexpr uint32_t kMost = std::numeric_limits<uint32_t>::max();
    require(counts.points <= kMost - mesh.pointCount(), "too many points");
    require(counts.polygons <= kMost - mesh.polygonCount(), "too many polygons");
}

// Only memory can run out from here on, and then the mesh is put back as it was.
void writeMesh(tzhost::MeshData& mesh, const TzhMeshCounts& counts, const TzhMeshArrays& in) {
    static_assert(sizeof(TzPoint) == 3 * sizeof(double));
    const auto* const points = reinterpret_cast<const TzPoint*>(in.points);
    const uint32_t first = counts.points > 0 ? mesh.addPoints(points, counts.points) : 0;
    std::vector<uint32_t> vertices;
    for (uint32_t i = 0; i < counts.polygons; ++i) {
        vertices.assign(in.vertices + in.vertex_starts[i], in.vertices + in.vertex_starts[i + 1]);
        for (uint32_t& vertex : vertices) vertex += first;
        tzhost::TagRun tags;
        for (uint64_t tag = counts.tags > 0 ? in.tag_starts[i] : 0;
             counts.tags > 0 && tag < in.tag_starts[i + 1]; ++tag) {
            const std::string_view text(in.text + in.text_starts[tag],
                                        in.text_starts[tag + 1] - in.text_starts[tag]);
            mesh.tagArena().add(tags, in.tag_ids[tag], text);
        }
        mesh.addPolygon(in.polygon_types[i], vertices.data(), static_cast<uint32_t>(vertices.size()), tags);
    }
}

}  // namespace
}  // namespace tzh

TzhStatus tzh_mesh_counts(const TzhScene* scene, uint32_t item, TzhMeshCounts* counts) {
    return tzh::guarded([&] {
        tzh::requireStruct(counts);
        tzh::copyOut(tzh::countsOf(tzh::meshOf(scene, item)), counts);
    });
}

TzhStatus tzh_mesh_read(const TzhScene* scene, uint32_t item, const TzhMeshArrays* arrays) {
    return tzh::guarded([&] {
        tzh::requireStruct(arrays);
        tzh::readMesh(tzh::meshOf(scene, item), tzh::copyIn(arrays));
    });
}

TzhStatus tzh_mesh_write(TzhScene* scene, uint32_t item, const TzhMeshCounts* counts,
                         const TzhMeshArrays* arrays) {
    return tzh::guarded([&] {
        tzh::requireStruct(counts);
        tzh::requireStruct(arrays);
        const TzhMeshCounts given = tzh::copyIn(counts);
        const TzhMeshArrays in = tzh::copyIn(arrays);
        const tzhost::MeshData& mesh = tzh::meshOf(scene, item);
        tzh::checkMesh(given, in);
        tzh::checkRoom(mesh, given);
        tzh::writeMesh(tzh::itemOf(scene, item).mesh(), given, in);
    });
}
