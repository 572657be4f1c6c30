// Pixels of tiles: each its own, zeroed whoever had the memory before.
#include "host/services/PixelMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>

TEST(PixelMemory, isZeroedAndNobodyElses) {
    constexpr size_t kTile = size_t{256} * 256 * 4;
    std::mt19937 random(5);
    std::map<char, std::shared_ptr<char>> kept;  // by what it is filled with
    char next = 1;
    for (int i = 0; i < 400; ++i) {
        if (kept.size() < 40 && random() % 5 < 3) {
            const size_t size = random() % 8 == 0 ? 4096 : kTile;
            auto memory = tzhost::makePixelMemory(size);
            ASSERT_EQ(std::count(memory.get(), memory.get() + size, '\0'), static_cast<ptrdiff_t>(size));
            std::memset(memory.get(), next, 4096);
            kept[next] = std::move(memory);
            next = next == 100 ? char{1} : static_cast<char>(next + 1);
        } else if (!kept.empty()) {
            const auto at = std::next(kept.begin(), random() % kept.size());
            ASSERT_EQ(std::count(at->second.get(), at->second.get() + 4096, at->first), 4096);
            kept.erase(at);
        }
    }
}
