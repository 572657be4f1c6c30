#include "host/SceneLoading.h"

#include <chrono>

#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzText.h"
#include "hostsdk/ITzSceneLoader.h"

namespace tzhost {
namespace {

constexpr TzTagId kSubPathTag = tzTag("SPAT");
constexpr std::string_view kFirstSubPath = "start{";

// The monitor that a load reports to.
class Monitor : public HostObject, public ITzMonitor {
  public:
    TzResult initialise(uint64_t stepCount) noexcept override {
        return onHostThread("ITzMonitor::initialise", [&] { progress_.setCount(stepCount); });
    }

    TzResult step(uint32_t steps) noexcept override {
        return onHostThread("ITzMonitor::step", [&] {
            done_ += steps;
            progress_.step(steps);
            cancelled_ =
                cancelled_ || core().observer->cancelled() || (cancelAfter_ != 0 && done_ >= cancelAfter_);
            return cancelled_ ? kTzCancelled : kTzOk;
        });
    }

    // Whether a step has reported a cancel.
    bool cancelled() const { return cancelled_; }

    // The load has ended; the module may still hold the monitor.
    void close() noexcept { progress_.close(); }

  protected:
    Monitor(const std::shared_ptr<HostCore>& core, const std::string& title, uint64_t cancelAfter)
        : HostObject(core, "monitor"), cancelAfter_(cancelAfter), progress_(*core->observer, title) {}
    ~Monitor() = default;

  private:
    const uint64_t cancelAfter_;  // as in ImportOptions
    uint64_t done_ = 0;
    bool cancelled_ = false;
    Progress progress_;
};

// The first loader, in registration order, that recognises the file.
CTzPtr<ITzSceneLoader> recognise(const Host& host, const std::string& fileName) {
    auto found = host.servers().find<ITzSceneLoader>([&](ITzSceneLoader& loader) {
        const TzResult recognised = loader.recognise(tzText(fileName));
        if (recognised == kTzNotRecognised) return false;
        tzCheck(recognised);
        return true;
    });
    if (!found) throw CTzError(kTzNotRecognised);
    return found;
}

void countItem(const MeshData& mesh, ImportSummary& summary) {
    summary.points += mesh.pointCount();
    summary.polygons += mesh.polygonCount();
    for (uint32_t i = 0; i < mesh.polygonCount(); ++i) {
        const auto subPath = findTag(mesh.polygon(i).tags, kSubPathTag);
        if (!subPath || subPath->substr(0, kFirstSubPath.size()) == kFirstSubPath) ++summary.shapes;
    }
}

}  // namespace

ImportSummary importFile(Host& host, Scene& scene, const Drawing& drawing, const ImportOptions& options) {
    requireReadable(drawing.file());
    const std::string& fileName = drawing.name();
    requireUtf8Name(fileName, "open");
    const auto began = std::chrono::steady_clock::now();
    const size_t itemsBefore = scene.items().size();
    const auto monitor = CTzPolymorph<Monitor, ITzMonitor>::createSelf(host.core(), "importing " + fileName,
                                                                       options.cancelAfter);
    try {
        const auto loader =
            inStep(fileName, "recognise", [&] { return recognise(host, drawing.readName()); });
        scene.setNameHint(std::filesystem::path(fileName).stem().native());
        inStep(fileName, "start", [&] { tzCheck(loader->start(&scene)); });
        inStep(fileName, "load", [&] {
            const TzResult loaded = loader->load(monitor.get());
            // A loader that was cancelled may return the general failure code.
            tzCheck(tzFailed(loaded) && monitor->cancelled() ? kTzCancelled : loaded);
        });
        inStep(fileName, "reset", [&] { tzCheck(loader->reset()); });
    } catch (...) {
        monitor->close();
        scene.truncate(itemsBefore);
        throw;
    }
    monitor->close();

    ImportSummary summary;
    summary.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    for (size_t i = itemsBefore; i < scene.items().size(); ++i)
        countItem(scene.items()[i]->data().mesh, summary);
    return summary;
}

}  // namespace tzhost
