// A module of two servers, each in its own file: a scene saver and an image loader.
#include "hostsdk/ITzModule.h"

#include "CheckerLoader.h"
#include "OutlineSaver.h"
#include "hostsdk/CTzPolymorph.h"

class ExampleModule : public ITzModule {
  public:
    TzResult initialise(ITzHost* host) noexcept override {
        return tzGate([host] {
            static constexpr TzServerTag kSaverTags[] = {
                {"saver.outClass", "scene2"}, {"saver.dosType", "outline"}, {nullptr, nullptr}};
            static constexpr TzServerTag kLoaderTags[] = {{"loader.classList", "image"},
                                                          {"loader.dosPattern", "*.checker"},
                                                          {"loader.threadsafe", "Yes"},
                                                          {nullptr, nullptr}};
            const auto shared = CTzPtr<ITzHost>::share(host);
            const auto registry = CTzUser_Host(shared).service<ITzServerRegistry>();
            tzCheck(registry->addServer(
                tzText("Outline_SceneSaver"),
                CTzPolymorph<OutlineSaver, ITzSceneSaver>::factory(shared, kSaverTags).get()));
            tzCheck(registry->addServer(
                tzText("Checker_ImageLoader"),
                CTzPolymorph<CheckerLoader, ITzImageLoader>::factory(shared, kLoaderTags).get()));
        });
    }
    TzResult shutdown() noexcept override { return kTzOk; }
};

extern "C" __attribute__((visibility("default"))) ITzModule* _ITzModule_Create(uint32_t hostSdkVersion,
                                                                               uint32_t* moduleSdkVersion,
                                                                               TzResult* result) {
    *moduleSdkVersion = kTzSdkVersion;
    ITzModule* module = nullptr;
    *result = tzGate([&] {
        if (!tzSdkCompatible(hostSdkVersion, kTzSdkVersion)) return kTzVersionMismatch;
        module = CTzPolymorph<ExampleModule, ITzModule>::create().detach();
        return kTzOk;
    });
    return module;
}
