// Not huge pages: where they are at hand they come sooner, but on a virtual machine the first touch of one
// took ten times as long as all the small ones.
#include "host/services/PixelMemory.h"

#include <sys/mman.h>

#include <cstring>
#include <mutex>
#include <new>
#include <vector>

namespace tzhost {
namespace {

constexpr size_t kTileBytes = size_t{256} * 256 * 4;

// The pages of a tile are mapped all at once, also those of one kept as floats: two thirds of the time that
// it takes page by page.
char* mapPages(size_t size) {
    const int populate = size <= kTileBytes * sizeof(float) ? MAP_POPULATE : 0;
    void* const start =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | populate, -1, 0);
    if (start == MAP_FAILED) throw std::bad_alloc();
    return static_cast<char*>(start);
}

class TileMemory {
  public:
    TileMemory() { free_.reserve(kKept); }
    ~TileMemory() {
        for (char* const start : free_) munmap(start, kTileBytes);
    }
    TileMemory(const TileMemory&) = delete;
    TileMemory& operator=(const TileMemory&) = delete;

    char* take() {
        char* const start = takeFree();
        if (!start) return mapPages(kTileBytes);
        std::memset(start, 0, kTileBytes);
        return start;
    }

    void giveBack(char* start) noexcept {
        {
            const std::lock_guard held(lock_);
            if (free_.size() < kKept) return free_.push_back(start);
        }
        munmap(start, kTileBytes);
    }

  private:
    static constexpr size_t kKept = 128;

    char* takeFree() {
        const std::lock_guard held(lock_);
        if (free_.empty()) return nullptr;
        char* const start = free_.back();
        free_.pop_back();
        return start;
    }

    std::mutex lock_;
    std::vector<char*> free_;
};

}  // namespace

std::shared_ptr<char> makePixelMemory(size_t size) {
    if (size != kTileBytes) return {mapPages(size), [size](char* start) { munmap(start, size); }};
    static const auto kTiles = std::make_shared<TileMemory>();
    // What is kept outlives every image.
    return {kTiles->take(), [tiles = kTiles](char* start) { tiles->giveBack(start); }};
}

}  // namespace tzhost
