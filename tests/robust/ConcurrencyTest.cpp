// Scene imports, exports, image loads and tile reads on several threads at once: nothing that the module
// keeps for the life of the process (names, tables, Qt's application) is shared without care. A
// program of its own: the thread sanitizer runs it.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "host/ImageLoading.h"
#include "host/ModuleLibrary.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/scenefile/SceneWriter.h"
#include "tests/common/TestFolder.h"

namespace tzhost {
namespace {

constexpr int kRounds = 6;

// Samples that between them use groups, transforms, styles, curves, text and gradients.
const char* const kSamples[] = {"town-map.svg", "mobile.svg", "balloon-illustrator.svg", "poster.svg"};

std::filesystem::path sample(const char* name) {
    return std::filesystem::path(SAMPLES_FOLDER) / name;
}

// What an import and an export of a sample leave, with a host of the calling thread's own.
std::string imported(const TestFolder& folder, const char* name) {
    Session session(TZSVG_MODULE);
    const ScenePtr scene = session.host.makeScene();
    importFile(session.host, *scene, sample(name));
    writeSceneFile(*scene, folder / "scene.json");
    exportFile(session.host, *scene, folder / "out.svg");
    return folder.read("scene.json") + folder.read("out.svg");
}

std::vector<float> tilesOf(const Host& host, const char* name) {
    const LoadedImage loaded = loadImage(host, sample(name));
    std::vector<float> all;
    for (uint32_t level = 7; level <= 8; ++level) {
        for (const TzTilePlace place : {TzTilePlace{0, 0}, TzTilePlace{1, 0}}) {
            const std::vector<float> pixels = readPixels(fetchTile(*loaded.tiles, level, place));
            all.insert(all.end(), pixels.begin(), pixels.end());
        }
    }
    return all;
}

// No thread has used the module before these: what is built on first use is built by several at once.
TEST(Concurrency, importsExportsAndTiles) {
    Session images(TZSVG_MODULE);
    const size_t kinds = std::size(kSamples);
    std::vector<std::vector<std::string>> scenes(kinds);
    std::vector<std::vector<std::vector<float>>> pictures(kinds);
    std::vector<std::thread> threads;
    for (size_t k = 0; k < kinds; ++k) {
        threads.emplace_back([&, k] {
            const TestFolder folder;
            for (int i = 0; i < kRounds; ++i) scenes[k].push_back(imported(folder, kSamples[k]));
        });
        threads.emplace_back([&, k] {
            for (int i = 0; i < kRounds; ++i) pictures[k].push_back(tilesOf(images.host, kSamples[k]));
        });
    }
    for (std::thread& thread : threads) thread.join();

    // What the same work gives while no other thread is at it. On a thread as well, since the main one must
    // not use Qt: what Qt keeps for a thread goes with the thread, and the main one's would
    // be left, where the leak sanitizer finds no way to it once another thread made the application.
    std::thread([&] {
        const TestFolder folder;
        for (size_t k = 0; k < kinds; ++k) {
            const std::string scene = imported(folder, kSamples[k]);
            const std::vector<float> picture = tilesOf(images.host, kSamples[k]);
            for (int i = 0; i < kRounds; ++i) {
                EXPECT_EQ(scenes[k][i], scene) << kSamples[k];
                EXPECT_TRUE(pictures[k][i] == picture) << kSamples[k];
            }
        }
    }).join();
    EXPECT_EQ(images.unload(), std::vector<std::string>{});
}

}  // namespace
}  // namespace tzhost
