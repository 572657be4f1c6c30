// Tiles: their first drawing, neighbours in turn, against a bare renderer; tiles that are cached; and two
// threads.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "bench/BareRenderer.h"
#include "bench/ChildRun.h"
#include "bench/Figures.h"
#include "bench/Table.h"
#include "host/ImageLoading.h"
#include "host/ModuleLibrary.h"

namespace tzbench {
namespace {

namespace fs = std::filesystem;

constexpr PictureKind kPictures[] = {PictureKind::kIcon,         PictureKind::kRects,
                                     PictureKind::kManyRects,    PictureKind::kGradients40,
                                     PictureKind::kGradients200, PictureKind::kLargeCurves};
constexpr uint32_t kLevels[] = {1024, 8192, 65536};

// A block of neighbouring tiles from the middle of a level.
std::vector<TzTilePlace> block(uint32_t levelSide, uint32_t blockSide = 4) {
    const uint32_t first = (levelSide / kTileSide - blockSide) / 2;
    std::vector<TzTilePlace> places;
    for (uint32_t row = 0; row < blockSide; ++row) {
        for (uint32_t column = 0; column < blockSide; ++column)
            places.push_back({first + column, first + row});
    }
    return places;
}

// The tile interface counts levels from the finest, whose side is 65,536.
uint32_t tileLevel(uint32_t levelSide) {
    uint32_t level = 0;
    for (uint32_t side = 65536; side > levelSide; side /= 2) ++level;
    return level;
}

void fetch(const tzhost::LoadedImage& image, uint32_t levelSide, TzTilePlace place) {
    ITzImage* tile = nullptr;
    tzCheck(image.tiles->tile(tileLevel(levelSide), place, &tile));
    CTzPtr<ITzImage>::adopt(tile);
}

// A renderer of a file that was just written is not kept (its time could stay the same when it is written
// again).
tzhost::LoadedImage loadSettled(const tzhost::Host& host, const fs::path& picture) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    return tzhost::loadImage(host, picture);
}

constexpr uint32_t kFinestSide = 65536;

// What of the bare renderer's time a first tile may take.
double boundOfFirstTiles(PictureKind kind, uint32_t side) {
    if (side < kFinestSide) return 1.1;
    switch (kind) {
        case PictureKind::kRects:
        case PictureKind::kGradients40:
        case PictureKind::kGradients200:
            return 0.1;
        case PictureKind::kManyRects:
            return 0.02;
        default:
            return 1.1;
    }
}

// Seconds of every tile, ours and the floor's, each the least of several passes; a pass has a new image, and
// the two sides take turns within it, tile by tile.
Line firstTiles(const fs::path& picture, uint32_t levelSide) {
    const std::vector<double> seconds = inChild([&] {
        tzhost::Session session(TZSVG_MODULE);
        const std::vector<TzTilePlace> places = block(levelSide);
        std::vector<double> ours(places.size(), 1e9);
        std::vector<double> floor(places.size(), 1e9);
        constexpr int kPasses = 5;
        constexpr double kEnough = 2.0;
        double spent = 0.0;
        for (int pass = 0; pass < kPasses && spent < kEnough; ++pass) {
            const tzhost::LoadedImage image = loadSettled(session.host, picture);
            fetch(image, kFinestSide, {0, 0});  // what is done once a drawing is done
            BareRenderer bare(picture);
            for (size_t i = 0; i < places.size(); ++i) {
                const double bareSeconds =
                    secondsOf([&] { bare.drawFloats(levelSide, places[i].column, places[i].row); });
                const double ourSeconds = secondsOf([&] { fetch(image, levelSide, places[i]); });
                floor[i] = std::min(floor[i], bareSeconds);
                ours[i] = std::min(ours[i], ourSeconds);
                spent += bareSeconds + ourSeconds;
            }
        }
        double ourSum = 0.0;
        double floorSum = 0.0;
        for (size_t i = 0; i < places.size(); ++i) {
            ourSum += ours[i];
            floorSum += floor[i];
        }
        return std::vector<double>{1e3 * ourSum / static_cast<double>(places.size()),
                                   1e3 * floorSum / static_cast<double>(places.size())};
    });
    return ratio(seconds.at(0), seconds.at(1));
}

double clockSecondsOf(const std::function<void()>& work) {
    const auto began = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
}

// Runs `work(thread)` on that many threads at once; the seconds by the clock until the last is done.
double onThreads(uint32_t count, const std::function<void(uint32_t)>& work) {
    std::atomic<uint32_t> ready{0};
    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    for (uint32_t i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            ++ready;
            while (!go) std::this_thread::yield();
            work(i);
        });
    }
    while (ready < count) std::this_thread::yield();
    return clockSecondsOf([&] {
        go = true;
        for (std::thread& thread : threads) thread.join();
    });
}

// Microseconds that a thread waits for a cached tile when it and others read different ones.
double cachedTile(const fs::path& picture, uint32_t threads) {
    constexpr uint32_t kSide = 1024;
    constexpr int kReads = 200000;
    return inChild([&] {
               tzhost::Session session(TZSVG_MODULE);
               const tzhost::LoadedImage image = loadSettled(session.host, picture);
               const std::vector<TzTilePlace> places = block(kSide);
               for (const TzTilePlace& place : places) fetch(image, kSide, place);
               double least = 1e9;
               for (int pass = 0; pass < 5; ++pass) {
                   least = std::min(least, onThreads(threads, [&](uint32_t thread) {
                                        for (size_t i = 0; i < kReads; ++i)
                                            fetch(image, kSide, places[(2 * i + thread) % places.size()]);
                                    }));
               }
               return std::vector<double>{1e6 * least / kReads};
           })
        .at(0);
}

// Tiles a second with two threads, each drawing every other tile of a block: ours on one image, the floor on
// a renderer for each thread. Both threads draw all the time, and each of them both sides of every tile in
// turn, so that what else runs on the machine slows both alike.
Line twoThreads(const fs::path& picture) {
    constexpr uint32_t kThreads = 2;
    constexpr uint32_t kSide = 8192;
    constexpr uint32_t kBlock = 12;
    const std::vector<double> tilesASecond = inChild([&] {
        tzhost::Session session(TZSVG_MODULE);
        const std::vector<TzTilePlace> places = block(kSide, kBlock);
        constexpr int kPasses = 10;
        constexpr double kEnough = 4.0;
        double ours[kThreads] = {};
        double floor[kThreads] = {};
        size_t tiles = 0;
        for (int pass = 0; pass < kPasses && ours[0] + floor[0] < kEnough; ++pass) {
            const tzhost::LoadedImage image = loadSettled(session.host, picture);
            BareRenderer renderers[kThreads] = {BareRenderer(picture), BareRenderer(picture)};
            // A renderer for each thread is loaded.
            onThreads(kThreads, [&](uint32_t thread) {
                for (uint32_t row = 0; row < kThreads; ++row) fetch(image, kSide, {thread, row});
            });
            onThreads(kThreads, [&](uint32_t thread) {
                for (size_t i = thread; i < places.size(); i += kThreads) {
                    const TzTilePlace place = places[i];
                    const auto drawBare = [&] {
                        floor[thread] += clockSecondsOf(
                            [&] { renderers[thread].drawFloats(kSide, place.column, place.row); });
                    };
                    const bool bareFirst = i / kThreads % 2 == 0;
                    if (bareFirst) drawBare();
                    ours[thread] += clockSecondsOf([&] { fetch(image, kSide, place); });
                    if (!bareFirst) drawBare();
                }
            });
            tiles += places.size();
        }
        const auto each = static_cast<double>(tiles) / kThreads;
        return std::vector<double>{each / ours[0] + each / ours[1], each / floor[0] + each / floor[1]};
    });
    return ratio(tilesASecond.at(0), tilesASecond.at(1));
}

// Milliseconds of the first tile of the finest level, which has the drawing prepared, and of loading it.
Line preparing(const fs::path& picture) {
    const std::vector<double> seconds = inChild([&] {
        tzhost::Session session(TZSVG_MODULE);
        const tzhost::LoadedImage image = loadSettled(session.host, picture);
        const double load = secondsOf([&] { BareRenderer bare(picture); });
        return std::vector<double>{1e3 * secondsOf([&] { fetch(image, kFinestSide, {0, 0}); }), 1e3 * load};
    });
    return ratio(seconds.at(0), seconds.at(1));
}

// Tiles a second at the finest level but three, drawn by two threads and by one: each pass has a new image,
// and either draws as many tiles of it.
Line twoThreadsAgainstOne(const fs::path& picture) {
    constexpr uint32_t kSide = 8192;
    constexpr uint32_t kBlock = 16;
    const std::vector<double> tilesASecond = inChild([&] {
        tzhost::Session session(TZSVG_MODULE);
        const std::vector<TzTilePlace> places = block(kSide, kBlock);
        double seconds[2] = {1e9, 1e9};
        // Many, since a pass of quick tiles is over before the system has placed the threads well.
        constexpr int kPasses = 40;
        constexpr double kEnough = 5.0;
        double spent = 0.0;
        for (int pass = 0; pass < 6 || (pass < kPasses && spent < kEnough); ++pass) {
            const tzhost::LoadedImage image = loadSettled(session.host, picture);
            fetch(image, kFinestSide, {0, 0});
            const uint32_t threads = 1 + pass % 2;
            // A renderer for each thread is loaded.
            onThreads(threads, [&](uint32_t thread) { fetch(image, kSide, {thread, 0}); });
            const double took = onThreads(threads, [&](uint32_t thread) {
                for (size_t i = thread; i < places.size(); i += threads) fetch(image, kSide, places[i]);
            });
            seconds[pass % 2] = std::min(seconds[pass % 2], took);
            spent += took;
        }
        const auto count = static_cast<double>(places.size());
        return std::vector<double>{count / seconds[1], count / seconds[0]};
    });
    return ratio(tilesASecond.at(0), tilesASecond.at(1));
}

}  // namespace

void addTileFigures(const Documents& documents) {
    for (const PictureKind kind : kPictures) {
        for (const uint32_t side : kLevels) {
            addFigure("first tiles at " + std::to_string(side) + ": " + nameOf(kind), "ms", Target::kAtMost,
                      boundOfFirstTiles(kind, side),
                      [=, &documents] { return firstTiles(documents.picture(kind), side); });
        }
    }
    for (const PictureKind kind :
         {PictureKind::kRects, PictureKind::kManyRects, PictureKind::kGradients200}) {
        addFigure(std::string("preparing, of a load: ") + nameOf(kind), "ms", Target::kAtMost, 3.0,
                  [=, &documents] { return preparing(documents.picture(kind)); });
    }
    addFigure("cached tile, us", "us", Target::kAtMost, 1.0, [&documents] {
        const double one = cachedTile(documents.picture(PictureKind::kIcon), 1);
        return Line{one, 1.0, one};
    });
    addFigure("cached tile, us, two threads at different tiles", "us", Target::kAtMost, 1.0, [&documents] {
        const double two = cachedTile(documents.picture(PictureKind::kIcon), 2);
        return Line{two, 1.0, two};
    });
    for (const PictureKind kind : kPictures) {
        addFigure(std::string("two threads at 8192: ") + nameOf(kind), "tiles/s", Target::kAtLeast, 0.95,
                  [=, &documents] { return twoThreads(documents.picture(kind)); });
        addFigure(std::string("two threads of one, at 8192: ") + nameOf(kind), "tiles/s", Target::kAtLeast,
                  1.6, [=, &documents] { return twoThreadsAgainstOne(documents.picture(kind)); });
    }
}

}  // namespace tzbench
