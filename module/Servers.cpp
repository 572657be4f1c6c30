// See the header. Called once, by the module object.
#include "module/Servers.h"

#include "export/SVGSaver.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser.h"
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

}  // namespace

void registerServers(const CTzPtr<ITzHost>& host) {
    const auto registry = CTzUser_Host(host).service<ITzServerRegistry>();
    for (const Server& server : kServers) {
        const CTzPtr<ITzServerFactory> factory = server.factory(host, server.tags);
        tzCheck(registry->addServer(tzText(server.name), factory.get()));
    }
}

}  // namespace tzsvg
