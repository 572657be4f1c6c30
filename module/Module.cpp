// The exported entry, the module object that it makes, and the table of servers that the object registers.
#include "export/SVGSaver.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser.h"
#include "hostsdk/ITzModule.h"
#include "image/CSVGImageLoader.h"
#include "import/SVGLoader.h"
#include "import/SVGLoaderPackage.h"
#include "svg/RoundTripNames.h"

namespace tzsvg {
namespace {

constexpr TzServerTag kSceneLoaderTags[] = {
    {"loader.classList", "scene2"},
    {"loader.dosPattern", "*.svg"},
    {"server.username", "Scalable Vector Graphics"},
    {nullptr, nullptr},
};

// The saver's user name differs from the loaders' on purpose: the two stand in one list of the host.
constexpr TzServerTag kSceneSaverTags[] = {
    {"saver.outClass", "scene2"},
    {"saver.dosType", "svg"},
    {"server.username", "SVG: Scalable Vector Graphics"},
    {nullptr, nullptr},
};

// Only the image loader may be called from several threads at once.
constexpr TzServerTag kImageLoaderTags[] = {
    {"loader.classList", "image"},        {"loader.dosPattern", "*.svg"},
    {"loader.threadsafe", "Yes"},         {"server.username", "Scalable Vector Graphics"},
    {"server.logsubsystem", "io-status"}, {nullptr, nullptr},
};

struct Server {
    const char* name;
    CTzPtr<ITzServerFactory> (*factory)(const CTzPtr<ITzHost>& host, const TzServerTag* tags);
    const TzServerTag* tags;
};

constexpr Server kServers[] = {
    {"SVG_SceneLoader", CTzPolymorph<SVGLoader, ITzSceneLoader>::factory, kSceneLoaderTags},
    {"SVG_SceneSaver", CTzPolymorph<SVGSaver, ITzSceneSaver>::factory, kSceneSaverTags},
    {"SVG_ImageLoader", CTzPolymorph<CSVGImageLoader, ITzImageLoader>::factory, kImageLoaderTags},
    {kPackageName, CTzPolymorph<SVGLoaderPackage, ITzPackage, ITzPackageInstances>::factory, nullptr},
};

// In the order of the table.
void registerServers(const CTzPtr<ITzHost>& host) {
    const auto registry = CTzUser_Host(host).service<ITzServerRegistry>();
    for (const Server& server : kServers) {
        const CTzPtr<ITzServerFactory> factory = server.factory(host, server.tags);
        tzCheck(registry->addServer(tzText(server.name), factory.get()));
    }
}

class CTzThisModule : public ITzModule {
  public:
    TzResult initialise(ITzHost* host) noexcept override {
        if (!host) return kTzInvalidArgument;
        return tzGate([&] { registerServers(CTzPtr<ITzHost>::share(host)); });
    }

    // The host is kept by the factories and objects that it holds itself; nothing is left to let go of.
    TzResult shutdown() noexcept override { return kTzOk; }
};

}  // namespace
}  // namespace tzsvg

// The name is the host's, reserved identifier or not.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
extern "C" __attribute__((visibility("default"))) ITzModule* _ITzModule_Create(uint32_t hostSdkVersion,
                                                                               uint32_t* moduleSdkVersion,
                                                                               TzResult* result) {
    if (moduleSdkVersion) *moduleSdkVersion = kTzSdkVersion;
    ITzModule* module = nullptr;
    const TzResult created = tzGate([&] {
        if (!tzSdkCompatible(hostSdkVersion, kTzSdkVersion)) return kTzVersionMismatch;
        module = CTzPolymorph<tzsvg::CTzThisModule, ITzModule>::create().detach();
        return kTzOk;
    });
    if (result) *result = created;
    return module;
}
