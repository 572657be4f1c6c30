// Every call that the module makes to the host goes wrong once, in each way that a host can: the operation
// ends with a failure, lets go of everything, replaces nothing, and the next one is as if nothing had been.
#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "host/ImageLoading.h"
#include "host/ModuleLibrary.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/core/OperationError.h"
#include "host/scenefile/SceneWriter.h"
#include "tests/common/TestFolder.h"

namespace tzhost {
namespace {

// Touches every part of an import and of an export: groups, definitions, a percentage, sub-paths, styles, a
// document type, text that stays in the mesh's package.
constexpr char kDrawing[] =
    "<!DOCTYPE svg><svg width='200' height='100' viewBox='0 0 2 1' version='1.1'><defs><a/></defs>"
    "<clipPath/><i:pgf id='adobe_illustrator_pgf'/><g id='o'><path d='M0 0L1 1M2 2L3 3' id='p'/>"
    "<switch><rect width='50%' height='50%' fill='red' stroke='blue'/></switch></g></svg>";

// Operations that hand out an object: without it the work cannot go on.
const std::set<std::string>& handingOut() {
    static const std::set<std::string> names{"ITzHost::service",
                                             "ITzScene::createItem",
                                             "ITzScene::itemAt",
                                             "ITzServerRegistry::spawn",
                                             "ITzImageService::createImage",
                                             "ITzThreadService::createMutex",
                                             "ITzThreadService::createGuard"};
    return names;
}

// The code that an operation ends with.
TzResult codeOf(const std::function<void()>& operation) {
    try {
        operation();
        return kTzOk;
    } catch (const OperationError& error) {
        return error.result();
    } catch (const CTzError& error) {
        return error.result();
    }
}

class FaultInjection : public testing::Test {
  protected:
    FaultInjection() { folder_.write("in.svg", kDrawing); }

    // Runs the operation with each of its calls going wrong in that way; `result` is what it left, compared
    // afterwards with what an undisturbed one leaves. `harmless` calls need not fail the operation.
    void walk(const std::function<void()>& operation, const std::function<std::string()>& result,
              const std::set<std::string>& harmless = {}) {
        ServiceGate& gate = session_.host.gate();
        operation();
        const std::string good = result();
        const auto alive = gate.objectsAlive();
        for (const Fault fault : {Fault::kCode, Fault::kException, Fault::kNullResult}) {
            uint64_t call = 1;
            for (;; ++call) {
                gate.failCall(call, fault);
                const TzResult code = codeOf(operation);
                gate.ignoreCalls();
                const std::string failed = gate.failedOperation();
                if (failed.empty()) break;
                SCOPED_TRACE(failed + ", call " + std::to_string(call) + ", fault " +
                             std::to_string(static_cast<int>(fault)));
                ASSERT_EQ(gate.objectsAlive(), alive);
                const bool mustFail = fault != Fault::kNullResult || handingOut().count(failed) > 0;
                if (mustFail && harmless.count(failed) == 0) {
                    ASSERT_TRUE(tzFailed(code));
                }
                ASSERT_EQ(codeOf(operation), kTzOk);
                ASSERT_EQ(result(), good);
            }
            EXPECT_GT(call, 20U);
        }
    }

    std::string sceneText(const Scene& scene) {
        writeSceneFile(scene, folder_ / "scene.json");
        return folder_.read("scene.json");
    }

    void TearDown() override { EXPECT_EQ(session_.unload(), std::vector<std::string>{}); }

    TestFolder folder_;
    Session session_{TZSVG_MODULE};
};

TEST_F(FaultInjection, import) {
    std::string made;
    walk(
        [&] {
            const ScenePtr scene = session_.host.makeScene();
            const TzResult code = codeOf([&] { importFile(session_.host, *scene, folder_ / "in.svg"); });
            EXPECT_EQ(scene->items().empty(), tzFailed(code));
            tzCheck(code);
            made = sceneText(*scene);
        },
        [&] { return made; });
}

// A warning that is not shown costs nothing, and the first of two meshes without bounds only itself.
TEST_F(FaultInjection, exportOverAGoodFile) {
    const ScenePtr scene = session_.host.makeScene();
    importFile(session_.host, *scene, folder_ / "in.svg");
    importFile(session_.host, *scene, folder_ / "in.svg");  // a second package in the scene
    exportFile(session_.host, *scene, folder_ / "out.svg", {true});
    const std::string good = folder_.read("out.svg");
    const auto names = folder_.names();
    walk(
        [&] {
            const TzResult code =
                codeOf([&] { exportFile(session_.host, *scene, folder_ / "out.svg", {true}); });
            if (tzFailed(code)) {
                EXPECT_EQ(folder_.read("out.svg"), good);
                EXPECT_EQ(folder_.names(), names);
            }
            tzCheck(code);
        },
        [&] { return folder_.read("out.svg"); },
        {"ITzHost::service", "ITzMessages::post", "ITzMesh::bounds"});
}

// A renderer that cannot be put back into the pool is none that the caller misses.
TEST_F(FaultInjection, image) {
    std::vector<float> pixels;
    walk(
        [&] {
            const LoadedImage loaded = loadImage(session_.host, folder_ / "in.svg");
            pixels = readPixels(fetchTile(*loaded.tiles, 9, {1, 0}));
            float pixel[4] = {};
            tzCheck(loaded.samples->samplePixel(3, 2, 1, kTzPixelRgbaFloat, pixel));
            pixels.insert(pixels.end(), pixel, pixel + 4);
        },
        [&] {
            return std::string(reinterpret_cast<const char*>(pixels.data()), pixels.size() * sizeof(float));
        },
        {"ITzThreadMutex::lock"});
}

// The module's own start: registration of its servers.
TEST(FaultInjectionOfModule, load) {
    for (const Fault fault : {Fault::kCode, Fault::kException}) {
        uint64_t call = 1;
        for (;; ++call) {
            Host host;
            host.gate().failCall(call, fault);
            const TzResult code = codeOf([&] { const ModuleLibrary module(host, TZSVG_MODULE); });
            host.gate().ignoreCalls();
            if (host.gate().failedOperation().empty()) {
                EXPECT_EQ(code, kTzOk);
                break;
            }
            EXPECT_EQ(code, fault == Fault::kCode ? kTzOutOfMemory : kTzFailed) << call;
            EXPECT_TRUE(host.servers().servers().empty()) << call;
        }
        EXPECT_GT(call, 4U);
    }
}

}  // namespace
}  // namespace tzhost
