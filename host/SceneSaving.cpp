// See the header.
#include "host/SceneSaving.h"

#include "host/InputFile.h"
#include "host/Interrupt.h"
#include "host/OperationError.h"
#include "hostsdk/CTzText.h"
#include "hostsdk/ITzSceneSaver.h"

namespace tzhost {
namespace {

CTzPtr<ITzSceneSaver> spawnSaver(const Host& host) {
    for (const Server& server : host.servers().servers()) {
        void* out = nullptr;
        const TzResult spawned = server.factory->spawn(ITzSceneSaver::kId, &out);
        if (spawned == kTzNoInterface) continue;  // a server of another kind
        tzCheck(spawned);
        return CTzPtr<ITzSceneSaver>::adopt(static_cast<ITzSceneSaver*>(out));
    }
    throw CTzError(kTzNotFound);
}

}  // namespace

void exportScene(Host& host, Scene& scene, OutputFile& out, const ExportOptions& options) {
    const std::string& fileName = out.name();
    requireUtf8Name(fileName, "save");
    const InterruptScope interruptScope;
    const auto saver = inStep(fileName, "find saver", [&] { return spawnSaver(host); });
    inStep(fileName, "verify", [&] { tzCheck(saver->verify(&scene)); });
    const uint32_t flags = options.preparatoryPass ? kTzSavePreparatoryPass : 0;
    inStep(fileName, "save", [&] {
        tzCheck(saver->save(tzText(out.temporaryName()), &scene, flags));
        if (interrupted()) throw CTzError(kTzCancelled);
    });
}

void exportFile(Host& host, Scene& scene, const std::filesystem::path& file, const ExportOptions& options) {
    OutputFile out(file, "save");
    exportScene(host, scene, out, options);
    out.commit();
}

}  // namespace tzhost
