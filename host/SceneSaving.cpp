#include "host/SceneSaving.h"

#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"
#include "hostsdk/CTzText.h"
#include "hostsdk/ITzSceneSaver.h"

namespace tzhost {
namespace {

CTzPtr<ITzSceneSaver> spawnSaver(const Host& host) {
    auto found = host.servers().find<ITzSceneSaver>([](ITzSceneSaver& /*saver*/) { return true; });
    if (!found) throw CTzError(kTzNotFound);
    return found;
}

// A saver reads every polygon, most of them once: the progress of a save is the polygons read.
class SaveProgress {
  public:
    SaveProgress(HostCore& core, const std::string& fileName, uint64_t polygonReads)
        : core_(core), progress_(*core.observer, "saving " + fileName, polygonReads) {
        core_.polygonReads = &progress_;
    }
    ~SaveProgress() { core_.polygonReads = nullptr; }
    SaveProgress(const SaveProgress&) = delete;
    SaveProgress& operator=(const SaveProgress&) = delete;

  private:
    HostCore& core_;
    Progress progress_;
};

uint64_t polygonCount(const Scene& scene) {
    uint64_t count = 0;
    for (const auto& item : scene.items()) count += item->data().mesh.polygonCount();
    return count;
}

}  // namespace

void exportScene(Host& host, Scene& scene, OutputFile& out, const ExportOptions& options) {
    const std::string& fileName = out.name();
    requireUtf8Name(fileName, "save");
    const SaveProgress progress(*host.core(), fileName, polygonCount(scene));
    const auto saver = inStep(fileName, "find saver", [&] { return spawnSaver(host); });
    inStep(fileName, "verify", [&] { tzCheck(saver->verify(&scene)); });
    const uint32_t flags = options.preparatoryPass ? kTzSavePreparatoryPass : 0;
    inStep(fileName, "save", [&] {
        tzCheck(saver->save(tzText(out.temporaryName()), &scene, flags));
        if (host.observer().cancelled()) throw CTzError(kTzCancelled);
    });
}

void exportFile(Host& host, Scene& scene, const std::filesystem::path& file, const ExportOptions& options) {
    OutputFile out(file, "save");
    exportScene(host, scene, out, options);
    out.commit();
}

}  // namespace tzhost
