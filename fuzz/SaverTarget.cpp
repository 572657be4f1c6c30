// Fuzz target: what a package keeps of a document, and the tags of a polygon, through the saver. The input is
// lines of "NAME=text": a channel, or a tag by its four letters. One of another name is left out, as one that
// is not UTF-8.
#include <array>
#include <string>

#include "fuzz/FuzzHost.h"
#include "host/SceneSaving.h"
#include "host/scene/Tags.h"
#include "hostsdk/CTzUser.h"
#include "svg/RoundTripNames.h"

namespace {

void addPolygons(const CTzUser_Mesh& mesh) {
    constexpr std::array<TzPoint, 4> kCorners = {{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}};
    const uint32_t first = mesh.addPoints(kCorners.data(), 4);
    const std::array<uint32_t, 4> vertices = {first, first + 1, first + 2, first + 3};
    for (const TzTagId type : {kTzPolygonLine, kTzPolygonBezier}) mesh.addPolygon(type, vertices.data(), 4);
}

void setText(const CTzUser_Item& item, std::string_view name, std::string_view text) {
    const auto tag = tzhost::tagFromName(name);
    if (!tag) return item.setChannel(name, text);
    for (uint32_t polygon = 0; polygon < 2; ++polygon) item.mesh().setPolygonTag(polygon, *tag, text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tzfuzz;
    FuzzHost& fuzz = FuzzHost::get();
    const tzhost::ScenePtr scene = fuzz.host().makeScene();
    uint32_t index = 0;
    const CTzUser_Item item =
        CTzUser_Scene(CTzPtr<ITzScene>::share(scene.get())).createItem(kTzItemMesh, index);
    item.addPackage(tzsvg::kPackageName);
    addPolygons(item.mesh());

    for (std::string_view rest = asText(data, size); !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        const size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        static_cast<void>(tzGate([&] { setText(item, line.substr(0, equals), line.substr(equals + 1)); }));
    }
    FuzzHost::orRefused([&] { tzhost::exportFile(fuzz.host(), *scene, fuzz.fileName("out.svg")); });
    return 0;
}
