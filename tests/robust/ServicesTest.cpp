// A host without one of the services: what the module does then is what docs/sdk.md says.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "host/ImageLoading.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser_Image.h"
#include "hostsdk/ITzModule.h"
#include "tests/common/TestFolder.h"

namespace tzhost {
namespace {

// A host that lacks a service.
class LackingHost : public ITzHost {
  public:
    LackingHost(ITzHost& host, const char* lacking) : host_(host), lacking_(lacking) {}
    TzResult service(const char* id, void** out) noexcept override {
        if (std::strcmp(id, lacking_) != 0) return host_.service(id, out);
        *out = nullptr;
        return kTzNoInterface;
    }

  private:
    ITzHost& host_;
    const char* lacking_;
};

std::string outcome(const std::function<void()>& work) {
    const TzResult result = tzGate(work);
    return result == kTzOk ? " works |" : std::string(" ") + tzResultText(result) + " |";
}

TEST(Services, areNeededAsTheDocumentSays) {
    const TestFolder folder;
    folder.write("in.svg", "<svg width='9' height='9'><path d='M0 0L9 0L9 9'/></svg>");
    folder.write("none.svg", "no drawing");
    TestFolder documents;
    std::filesystem::copy(SDK_DOCUMENT, documents / "sdk.md");
    const std::string document = documents.read("sdk.md");

    const auto entry =
        reinterpret_cast<TzModuleEntry>(dlsym(dlopen(TZSVG_MODULE, RTLD_NOW), kTzModuleEntryName));
    for (const char* const service :
         {ITzServerRegistry::kId, ITzLogService::kId, ITzLogWriter::kId, ITzMessages::kId,
          ITzImageService::kId, ITzTypeService::kId, ITzThreadService::kId}) {
        Host host;
        const ScenePtr scene = host.makeScene();
        const auto lacking = CTzPolymorph<LackingHost, ITzHost>::create(*host.object(), service);
        uint32_t version = 0;
        TzResult created = kTzFailed;
        const auto module = CTzPtr<ITzModule>::adopt(entry(kTzSdkVersion, &version, &created));
        std::string row = "| `" + std::string(service) + "` |";
        const std::string loaded = outcome([&] { tzCheck(module->initialise(lacking.get())); });
        row += loaded;
        if (loaded == " works |") {
            row += outcome([&] { importFile(host, *scene, folder / "in.svg"); });
            ItemData square;
            square.type = kTzItemMesh;
            const TzPoint points[] = {{0, 0, 0}, {9, 0, 0}, {9, 9, 0}};
            const uint32_t corners[] = {0, 1, 2};
            square.mesh.addPoints(points, 3);
            square.mesh.addPolygon(kTzPolygonLine, corners, 3);
            scene->addItem(std::move(square));
            row += outcome([&] { exportFile(host, *scene, folder / "out.svg"); });
            row += outcome([&] { fetchTile(*loadImage(host, folder / "in.svg").tiles, 12, {0, 0}); });
            row += outcome([&] { loadImage(host, folder / "none.svg"); });
        } else {
            row += " – | – | – | – |";
        }
        EXPECT_NE(document.find(row), std::string::npos) << row;
        host.servers().forget();
        EXPECT_EQ(module->shutdown(), kTzOk);
    }
}

}  // namespace
}  // namespace tzhost
