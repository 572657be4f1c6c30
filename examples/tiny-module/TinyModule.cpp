// A module with one server: a scene loader that reads files of the word "triangle" and a colour, and makes a
// triangle.
#include <fstream>
#include <string>

#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzSceneLoader.h"
#include "hostsdk/ITzModule.h"

class TriangleLoader : public CTzSceneLoader {
  public:
    explicit TriangleLoader(const CTzPtr<ITzHost>& host) : CTzSceneLoader(CTzUser_Host(host)) {}

  protected:
    bool recogniseFile(const std::string& fileName) override {
        std::string word;
        std::ifstream file(fileName);
        if (!(file >> word) || word != "triangle") return false;
        colour_.clear();
        file >> colour_;
        return true;
    }
    void startLoad() override { createItem(kTzItemMesh); }
    bool loadFile() override {
        if (colour_.empty()) {
            postMessage(kTzMessagesCommon, kTzMessageWarning, {"a triangle needs a colour"});
            return false;
        }
        beginPolygon(kTzPolygonLine);
        for (const TzPoint& p : {TzPoint{0, 0, 0}, TzPoint{2, 0, 0}, TzPoint{1, 1, 0}}) {
            addVertex(addPoint(p.x, p.y, p.z));
        }
        setPolygonTag(endPolygon(0), tzTag("FILL"), colour_);
        return true;
    }
    void resetFile() noexcept override { colour_.clear(); }

  private:
    std::string colour_;
};

class TinyModule : public ITzModule {
  public:
    TzResult initialise(ITzHost* host) noexcept override {
        return tzGate([host] {
            static constexpr TzServerTag kTags[] = {
                {"loader.classList", "scene2"}, {"loader.dosPattern", "*.triangle"}, {nullptr, nullptr}};
            const auto shared = CTzPtr<ITzHost>::share(host);
            const auto factory = CTzPolymorph<TriangleLoader, ITzSceneLoader>::factory(shared, kTags);
            const auto registry = CTzUser_Host(shared).service<ITzServerRegistry>();
            tzCheck(registry->addServer(tzText("Triangle_SceneLoader"), factory.get()));
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
        module = CTzPolymorph<TinyModule, ITzModule>::create().detach();
        return kTzOk;
    });
    return module;
}
