// One image in the hands of eight threads. A program of its own: these are the tests that the thread
// sanitizer runs, and it needs nothing but the image and the host for them.
#include <gtest/gtest.h>

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>
#include <atomic>
#include <new>
#include <thread>

#include "image/CSVGImage.h"
#include "image/painting/TileCanvas.h"
#include "tests/image/ImageFixture.h"

using namespace tzsvg;

namespace {

constexpr uint32_t kThreads = 8;

std::atomic<int64_t> seconds;

struct ImageThreads : ImageTest {
    struct Place {
        uint32_t level;
        TzTilePlace place;
        TzSize size;
        std::vector<Pixel> pixels;  // what the tile should be
    };

    // Sixteen tiles of two levels, all of one size, each drawn while no other thread is there.
    void SetUp() override {
        write(drawing("width='300' height='200'"));
        ASSERT_EQ(recognise(), kTzOk);
        const auto tiles = imageWithRoomFor(100);
        for (uint32_t level = 6; level < 8; ++level) {
            TzTileLevel of{};
            ASSERT_EQ(tiles->tileLevelSize(level, &of), kTzOk);
            const TzSize size{of.tileWidth, of.tileHeight};
            for (uint32_t y = 0; y * of.tileHeight < of.height; ++y) {
                for (uint32_t x = 0; x * of.tileWidth < of.width; ++x) {
                    const auto image = tile(*tiles, level, {x, y});
                    ASSERT_TRUE(image);
                    places.push_back({level, {x, y}, size, pixelsOf(*image, size)});
                }
            }
        }
    }

    // An image of the document whose cache is full at that many tiles, by the clock `seconds`.
    CTzPtr<ITzTileImage> imageWithRoomFor(uint64_t tiles) {
        const TileCache::Settings settings{tiles * 256 * 256 * 4, []() noexcept {
                                               return TileCache::Time(std::chrono::seconds(seconds.load()));
                                           }};
        const auto image = CTzPolymorph<CSVGImage, ITzImage, ITzTileImage, ITzImageLevelSample>::create(
            host.object(), settings);
        CSVGImage::ofThisModule(image.get())->initialise(static_cast<CSVGImageLoader&>(*loader), path());
        return image.query<ITzTileImage>();
    }

    static CTzPtr<ITzImage> tile(ITzTileImage& tiles, uint32_t level, TzTilePlace place) {
        ITzImage* out = nullptr;
        static_cast<void>(tiles.tile(level, place, &out));
        return CTzPtr<ITzImage>::adopt(out);
    }

    // Runs work(index) on eight threads at once.
    template <class Work>
    static void onThreads(Work&& work) {
        std::vector<std::thread> threads;
        for (uint32_t t = 0; t < kThreads; ++t) threads.emplace_back(work, t);
        for (std::thread& thread : threads) thread.join();
    }

    std::vector<Place> places;
};

}  // namespace

// Every thread asks for every tile, in an order of its own, and keeps it: as many images as tiles are made,
// and all threads get the same.
TEST_F(ImageThreads, eachTileIsDrawnOnce) {
    const auto tiles = imageWithRoomFor(100);
    std::vector<std::vector<CTzPtr<ITzImage>>> images(kThreads);
    onThreads([&](uint32_t t) {
        images[t].resize(places.size());
        for (size_t i = 0; i < places.size(); ++i) {
            const size_t at = (i * 5 + t / 2) % places.size();  // pairs of threads meet at each tile
            images[t][at] = tile(*tiles, places[at].level, places[at].place);
        }
    });
    EXPECT_EQ(host.imagesAlive(), static_cast<int>(places.size()));
    for (uint32_t t = 0; t < kThreads; ++t) {
        for (size_t i = 0; i < places.size(); ++i) {
            ASSERT_TRUE(images[t][i]);
            EXPECT_EQ(images[t][i].get(), images[0][i].get()) << t << ", " << i;
        }
    }
}

// Time passes with each request, so that trims fall between and into them: every tile is right for as long as
// its thread holds it.
TEST_F(ImageThreads, tilesAreRightWhileOthersAreDropped) {
    constexpr int kRoom = 4;
    const auto tiles = imageWithRoomFor(kRoom);
    std::atomic<int> wrong{0};
    onThreads([&](uint32_t t) {
        uint32_t random = t + 1;
        for (int i = 0; i < 60; ++i) {
            random = random * 1664525U + 1013904223U;
            const Place& place = places[(random >> 8U) % places.size()];
            ++seconds;
            const auto image = tile(*tiles, place.level, place.place);
            if (!image || !(pixelsOf(*image, place.size) == place.pixels)) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
    // How many the last trim among the threads found free is chance. Now none is held: the next one, which a
    // tile smaller than the others brings about, leaves no more of them than there is room for.
    seconds += 10;
    EXPECT_TRUE(tile(*tiles, 9, {0, 0}));
    EXPECT_LE(host.imagesAlive(), kRoom);
}

// Qt would have its pool's threads fill shapes of many spans, and wait for them: a host's own tasks on these
// may take long, or wait for the tile.
TEST_F(ImageThreads, tilesDoNotWaitForThreadsOfQt) {
    if (!TileCanvas::isOurs()) GTEST_SKIP() << "Qt paints";
    const auto tiles = imageWithRoomFor(100);
    QThreadPool& pool = *QThreadPool::globalInstance();
    QSemaphore begun;
    QSemaphore isDrawn;
    for (int i = 0; i < pool.maxThreadCount(); ++i) {
        pool.start([&] {
            begun.release();
            isDrawn.acquire();
        });
    }
    begun.acquire(pool.maxThreadCount());
    for (const Place& place : places) EXPECT_TRUE(tile(*tiles, place.level, place.place));
    isDrawn.release(pool.maxThreadCount());
    pool.waitForDone();
}
