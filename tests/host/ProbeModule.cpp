// A module for the tests of the host: its scene loader reads files that say, a word a line, what to do to the
// host. Built in variants that behave differently at their entry.
#include <chrono>
#include <csignal>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "hostsdk/CTzLogMessage.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzSceneLoader.h"
#include "hostsdk/ITzModule.h"
#include "hostsdk/ITzPackage.h"

#ifndef PROBE_SDK_VERSION
#define PROBE_SDK_VERSION kTzSdkVersion
#endif
#ifndef PROBE_INITIALISE
#define PROBE_INITIALISE kTzOk
#endif

namespace {

// A reference that is never released; kept where a leak detector sees that it is meant.
ITzItem* volatile leaked = nullptr;

class ProbeLog : public CTzLogMessage {
  public:
    explicit ProbeLog(const CTzUser_Host& host) : CTzLogMessage(host, "io-status") {}
    const char* formatName() const override { return "Probe"; }
    const char* version() const override { return "1"; }
};

class ProbeLoader : public CTzSceneLoader {
  public:
    explicit ProbeLoader(const CTzPtr<ITzHost>& host) : CTzSceneLoader(CTzUser_Host(host)) {}

  protected:
    bool recogniseFile(const std::string& fileName) override {
        std::ifstream file(fileName);
        std::string line;
        if (!std::getline(file, line) || line != "probe") return false;
        commands_.clear();
        while (std::getline(file, line)) commands_.push_back(line);
        return true;
    }

    void startLoad() override {
        createItem(kTzItemMesh);
        addPackage("probe.package");
    }

    bool loadFile() override {
        monitor().initialise(commands_.size());
        for (const std::string& command : commands_) {
            if (!carryOut(command) || !monitor().step(1)) return false;
        }
        return true;
    }

    void resetFile() noexcept override { commands_.clear(); }

  private:
    bool carryOut(const std::string& command) {
        if (command == "triangle") {
            beginPolygon(kTzPolygonLine);
            for (const double x : {0.0, 1.0, 2.0}) addVertex(addPoint(x, x * x, 0));
            setPolygonTag(endPolygon(0), tzTag("FILL"), "red");
            setItemTag(tzTag("VBOX"), "0 0 2 4");
            setChannel("probetext", "a triangle");
            log_.addLine("triangle\n");
        } else if (command == "log") {
            log_.addLine("ended\n");
            log_.addLine("not ended");
            log_.addErrorLine("an error");
        } else if (command == "fail") {
            return false;
        } else if (command == "throw") {
            throw 1;
        } else if (command == "exhaust") {
            throw std::bad_alloc();
        } else if (command.rfind("wait ", 0) == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(command.substr(5))));
        } else if (command.rfind("interrupt", 0) == 0) {
            std::raise(SIGINT);
            if (command == "interrupt twice") std::raise(SIGINT);
        } else if (command == "crash") {
            std::raise(SIGKILL);
        } else if (command == "thread") {
            std::thread([this] { setItemTagQuietly(); }).join();
        } else if (command == "leak") {
            leaked = itemHandle().pointer().get();
            leaked->retain();
        }
        return true;
    }

    void setItemTagQuietly() {
        tzGate([&] { setItemTag(tzTag("VBOX"), "from elsewhere"); });
    }

    std::vector<std::string> commands_;
    ProbeLog log_{host()};
};

class ProbeInstance : public ITzPackageInstance {
  public:
    TzResult packageName(TzTextSink name) noexcept override {
        return tzGate([&] { tzWrite(name, "probe.package"); });
    }
};

class ProbePackage : public ITzPackage, public ITzPackageInstances {
  public:
    explicit ProbePackage(const CTzPtr<ITzHost>& /*host*/) {}
    TzResult channelCount(uint32_t* count) noexcept override {
        *count = 1;
        return kTzOk;
    }
    TzResult channelAt(uint32_t index, TzTextSink name, TzTextSink type) noexcept override {
        if (index > 0) return kTzOutOfBounds;
        return tzGate([&] {
            tzWrite(name, "probetext");
            tzWrite(type, kTzChannelString);
        });
    }
    TzResult createInstance(ITzItem* /*item*/, ITzPackageInstance** instance) noexcept override {
        *instance = nullptr;
        return tzGate(
            [&] { *instance = CTzPolymorph<ProbeInstance, ITzPackageInstance>::create().detach(); });
    }
};

class ProbeModule : public ITzModule {
  public:
    TzResult initialise(ITzHost* host) noexcept override {
        const TzResult registered = tzGate([host] {
            static constexpr TzServerTag kTags[] = {{"loader.dosPattern", "*.probe"}, {nullptr, nullptr}};
            const auto shared = CTzPtr<ITzHost>::share(host);
            const auto registry = CTzUser_Host(shared).service<ITzServerRegistry>();
            const auto loader = CTzPolymorph<ProbeLoader, ITzSceneLoader>::factory(shared, kTags);
            const auto package =
                CTzPolymorph<ProbePackage, ITzPackage, ITzPackageInstances>::factory(shared, nullptr);
            tzCheck(registry->addServer(tzText("Probe_SceneLoader"), loader.get()));
            tzCheck(registry->addServer(tzText("probe.package"), package.get()));
        });
        return tzFailed(registered) ? registered : PROBE_INITIALISE;
    }
    TzResult shutdown() noexcept override { return kTzOk; }
};

}  // namespace

#ifndef PROBE_NO_ENTRY
// The name is the host's, reserved identifier or not.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
extern "C" __attribute__((visibility("default"))) ITzModule* _ITzModule_Create(uint32_t hostSdkVersion,
                                                                               uint32_t* moduleSdkVersion,
                                                                               TzResult* result) {
    *moduleSdkVersion = PROBE_SDK_VERSION;
    *result = kTzVersionMismatch;
    if (!tzSdkCompatible(hostSdkVersion, PROBE_SDK_VERSION)) return nullptr;
    *result = kTzOk;
    return CTzPolymorph<ProbeModule, ITzModule>::create().detach();
}
#endif
