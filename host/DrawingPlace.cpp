#include "host/DrawingPlace.h"

#include <algorithm>

#include "host/SceneLoading.h"

namespace tzhost {
namespace {

constexpr std::string_view kMark = R"(<rect id="tzhost-mark" x="0" y="0" width="100%" height="100%"/>)";
constexpr std::string_view kMarkId = "tzhost-mark";

// Whether a definition may be in the drawing's coordinates.
bool hasPlacedDefinitions(const ItemData& item) {
    for (const Channel& channel : item.channels) {
        if (channel.name == "clipdefs" && !channel.text.empty()) return true;
        if (channel.name == "svgdefs" && (channel.text.find("userSpaceOnUse") != std::string::npos ||
                                          channel.text.find("<pattern") != std::string::npos)) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<DrawingPlace> findDrawing(Host& host, const Scene& scene, const Drawing& drawing,
                                        bool forPage) {
    if (scene.items().empty()) return std::nullopt;
    const ItemData& item = scene.items().front()->data();
    if (item.mesh.pointCount() == 0 || (!forPage && !hasPlacedDefinitions(item))) return std::nullopt;
    std::string text = contentOf(drawing.readName());
    const size_t end = text.rfind("</svg");
    if (end == std::string::npos) return std::nullopt;
    text.insert(end, kMark);

    const ScenePtr marked = host.makeScene();
    const TzResult imported =
        tzGate([&] { importFile(host, *marked, InputFile::ofText(drawing.name(), text)); });
    if (tzFailed(imported) || marked->items().empty()) return std::nullopt;
    const MeshData& mesh = marked->items().front()->data().mesh;
    if (mesh.polygonCount() == 0) return std::nullopt;
    const Polygon& mark = mesh.polygon(mesh.polygonCount() - 1);
    if (mark.vertexCount == 0 || findTag(mark.tags, tzTag("ELID")) != kMarkId) return std::nullopt;
    DrawingPlace place;
    double lowest = 0.0;
    for (uint32_t i = 0; i < mark.vertexCount; ++i) {
        const TzPoint& corner = mesh.point(mesh.vertex(mark, i));
        place.width = std::max(place.width, corner.x);
        place.origin = i == 0 ? corner.y : std::max(place.origin, corner.y);
        lowest = i == 0 ? corner.y : std::min(lowest, corner.y);
    }
    place.height = place.origin - lowest;
    // Where the mark is the lowest of all, everything is turned over about its lower edge.
    place.origin += item.mesh.point(0).y - mesh.point(0).y;
    return place;
}

}  // namespace tzhost
