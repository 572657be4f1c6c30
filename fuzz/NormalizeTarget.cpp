// Fuzz target: a whole drawing through the normalizer. What it writes is imported, exported and imported
// again.
#include <cstdio>
#include <cstdlib>

#include "fuzz/FuzzHost.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "normalize/Normalize.h"

namespace {

// A step that the normalizer promises to get through.
template <class Step>
void require(const char* name, Step&& step) {
    try {
        step();
    } catch (const tzhost::OperationError& error) {
        std::fprintf(stderr, "%s of what was normalized: %s\n", name, error.what());
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tzfuzz;
    FuzzHost& fuzz = FuzzHost::get();
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const tznormalize::Normalized normalized = tznormalize::normalize(bytes, QString());
    if (normalized.refused) return 0;
    const std::string_view document(normalized.document.constData(),
                                    static_cast<size_t>(normalized.document.size()));
    const auto in = fuzz.file("normalized.svg", document);
    const auto out = fuzz.fileName("exported.svg");
    const auto import = [&](const std::filesystem::path& file, tzhost::Scene& scene) {
        tzhost::importFile(fuzz.host(), scene, file);
    };
    const tzhost::ScenePtr scene = fuzz.host().makeScene();
    require("import", [&] { import(in, *scene); });
    require("export", [&] { tzhost::exportFile(fuzz.host(), *scene, out); });
    const tzhost::ScenePtr again = fuzz.host().makeScene();
    require("second import", [&] { import(out, *again); });
    return 0;
}
