// Fuzz target: a scene file. What is read is drawn, saved as a drawing, and written and read again.
#include <cstdlib>

#include "fuzz/FuzzHost.h"
#include "host/SceneSaving.h"
#include "host/preview/Preview.h"
#include "host/scenefile/SceneReader.h"
#include "host/scenefile/SceneWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tzfuzz;
    FuzzHost& fuzz = FuzzHost::get();
    const auto in = fuzz.file("in.json", asText(data, size));
    const tzhost::ScenePtr scene = fuzz.host().makeScene();
    if (!FuzzHost::orRefused([&] { tzhost::readSceneFile(*scene, in); })) return 0;
    FuzzHost::orRefused([&] { tzhost::exportFile(fuzz.host(), *scene, fuzz.fileName("out.svg")); });
    FuzzHost::orRefused([&] { tzhost::inStep("in.json", "draw", [&] { tzhost::drawScene(*scene, 64); }); });

    const auto again = fuzz.fileName("again.json");
    const tzhost::ScenePtr copy = fuzz.host().makeScene();
    if (!FuzzHost::orRefused([&] { tzhost::writeSceneFile(*scene, again); }) ||
        !FuzzHost::orRefused([&] { tzhost::readSceneFile(*copy, again); }) ||
        copy->items().size() != scene->items().size()) {
        std::abort();  // what was read can be written, and read
    }
    return 0;
}
