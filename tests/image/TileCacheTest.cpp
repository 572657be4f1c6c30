// What the tile cache keeps, drops and renders, with a clock of its own.
#include "image/TileCache.h"

#include <gtest/gtest.h>

#include <atomic>

#include "tests/image/ImageHost.h"

using namespace tzsvg;
using namespace std::chrono_literals;

namespace {

std::atomic<TileCache::Time> fakeTime;

TileCache::Time fakeNow() noexcept {
    return fakeTime.load();
}

void pass(std::chrono::milliseconds time) {
    fakeTime.store(fakeTime.load() + time);
}

constexpr uint64_t kTileBytes = 1000;

struct CacheTest : ::testing::Test {
    explicit CacheTest(uint64_t limit = 10 * kTileBytes)
        : cache(CTzUser_ThreadService(host.service<ITzThreadService>()), {limit, fakeNow}) {}

    // Asks for tile i, letting go of it at once; true when it had to be rendered.
    bool request(uint32_t i, uint64_t document = 1) {
        bool rendered = false;
        cache.tile({16, i, 0}, [&] {
            rendered = true;
            return TileCache::Rendered{image(), kTileBytes, document};
        });
        return rendered;
    }

    CTzPtr<ITzImage> image(uint32_t width = 1) {
        return CTzUser_ImageService(host.service<ITzImageService>()).createImage({width, 1}, 4).pointer();
    }

    ImageHost host;
    TileCache cache;
};

}  // namespace

TEST_F(CacheTest, trimsToNineTenthsLeastRecentlyUsedFirst) {
    for (uint32_t i = 0; i < 9; ++i) {
        pass(1ms);
        EXPECT_TRUE(request(i));
    }
    pass(1ms);
    EXPECT_FALSE(request(0));  // used again: no longer the oldest
    pass(5s);
    EXPECT_TRUE(request(9));  // reaches the limit
    EXPECT_EQ(cache.bytes(), 9 * kTileBytes);
    EXPECT_EQ(host.imagesAlive(), 9);
    EXPECT_FALSE(request(0));
    EXPECT_TRUE(request(1));
}

TEST_F(CacheTest, trimsAreFiveSecondsApart) {
    const struct {
        std::chrono::milliseconds since;
        bool trimmed;
    } rows[] = {{4999ms, false}, {1ms, true}, {4999ms, false}, {25h, true}};
    uint32_t next = 0;
    while (cache.bytes() < 20 * kTileBytes) request(next++);
    for (const auto& row : rows) {
        pass(row.since);
        const uint64_t before = cache.bytes();
        request(next++);
        EXPECT_EQ(cache.bytes() == 9 * kTileBytes, row.trimmed) << row.since.count();
        if (!row.trimmed) {
            EXPECT_EQ(cache.bytes(), before + kTileBytes);
        }
        while (cache.bytes() < 20 * kTileBytes) request(next++);
    }
}

TEST_F(CacheTest, keepsWhatACallerHolds) {
    std::vector<CTzPtr<ITzImage>> held;
    for (uint32_t i = 0; i < 20; ++i) {
        held.push_back(cache.tile({16, i, 0}, [&] { return TileCache::Rendered{image(), kTileBytes, 1}; }));
    }
    pass(5s);
    request(20);
    EXPECT_EQ(cache.bytes(), 21 * kTileBytes);
    held.resize(5);
    pass(5s);
    request(21);
    EXPECT_EQ(cache.bytes(), 9 * kTileBytes);
    for (uint32_t i = 0; i < 5; ++i) EXPECT_FALSE(request(i)) << i;
}

TEST_F(CacheTest, failureLeavesTheTileToTheNextRequest) {
    EXPECT_THROW(cache.tile({16, 0, 0}, []() -> TileCache::Rendered { throw CTzError(kTzOutOfMemory); }),
                 CTzError);
    EXPECT_EQ(cache.bytes(), 0U);
    EXPECT_TRUE(request(0));
    EXPECT_FALSE(request(0));
}

TEST_F(CacheTest, tilesOfAnOlderDocumentAreStale) {
    request(0, 1);
    request(1, 1);
    request(2, 2);  // the document was found changed
    EXPECT_TRUE(request(0, 2));
    EXPECT_FALSE(request(0, 2));
    EXPECT_FALSE(request(2, 2));
    EXPECT_EQ(cache.bytes(), 3 * kTileBytes);  // a tile rendered again counts once
    EXPECT_EQ(host.imagesAlive(), 3);
}
