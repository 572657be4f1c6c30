// Fuzz target: a whole drawing through the scene loader, and what it made through the saver and the preview.
#include "fuzz/FuzzHost.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/preview/Preview.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tzfuzz;
    FuzzHost& fuzz = FuzzHost::get();
    const auto in = fuzz.file("in.svg", asText(data, size));
    const tzhost::ScenePtr scene = fuzz.host().makeScene();
    if (!FuzzHost::orRefused([&] { tzhost::importFile(fuzz.host(), *scene, in); })) return 0;
    FuzzHost::orRefused([&] { tzhost::exportFile(fuzz.host(), *scene, fuzz.fileName("out.svg")); });
    FuzzHost::orRefused([&] { tzhost::inStep("in.svg", "draw", [&] { tzhost::drawScene(*scene, 64); }); });
    return 0;
}
