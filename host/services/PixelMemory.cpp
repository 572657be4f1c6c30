#include "host/services/PixelMemory.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstring>
#include <list>
#include <mutex>
#include <new>

namespace tzhost {
namespace {

constexpr size_t kTileBytes = size_t{256} * 256 * 4 * sizeof(float);
constexpr size_t kHugePage = 2 * kTileBytes;

char* mapPages(size_t size) {
    void* const start = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (start == MAP_FAILED) throw std::bad_alloc();
    return static_cast<char*>(start);
}

// Where the system has no huge page to give, it is many ordinary ones.
char* mapHugePage() {
    char* const start = mapPages(2 * kHugePage);
    const size_t before = (kHugePage - reinterpret_cast<uintptr_t>(start) % kHugePage) % kHugePage;
    char* const page = start + before;
    if (before > 0) munmap(start, before);
    munmap(page + kHugePage, kHugePage - before);
    madvise(page, kHugePage, MADV_HUGEPAGE);
    return page;
}

class TilePages {
  public:
    // A half of a page: which page, and which half.
    struct Half {
        struct Page {
            char* start;
            bool isTaken[2];
            bool isWritten[2];
        };
        std::list<Page>::iterator page;
        size_t index;

        char* start() const { return page->start + index * kTileBytes; }
    };

    Half take() {
        const Half half = takeHalf();
        bool& isWritten = half.page->isWritten[half.index];
        if (isWritten) {
            std::memset(half.start(), 0, kTileBytes);
        } else {
            madvise(half.start(), kTileBytes, MADV_POPULATE_WRITE);  // where the page is not a huge one
        }
        isWritten = true;
        return half;
    }

    void giveBack(const Half& half) noexcept {
        std::list<Half::Page> gone;
        {
            const std::lock_guard held(lock_);
            const bool wasFull = half.page->isTaken[1 - half.index];
            half.page->isTaken[half.index] = false;
            if (wasFull) {
                half_.splice(half_.begin(), full_, half.page);
            } else {
                std::list<Half::Page>& to = free_.size() < kKeptPages ? free_ : gone;
                to.splice(to.begin(), half_, half.page);
            }
        }
        if (!gone.empty()) munmap(gone.front().start, kHugePage);
    }

  private:
    // Free ones that the next tiles will want: a host that draws tiles drops others meanwhile.
    static constexpr size_t kKeptPages = 16;

    Half takeHalf() {
        const std::lock_guard held(lock_);
        if (!half_.empty()) {
            full_.splice(full_.begin(), half_, half_.begin());
            Half::Page& page = full_.front();
            const size_t index = page.isTaken[0] ? 1 : 0;
            page.isTaken[index] = true;
            return {full_.begin(), index};
        }
        if (free_.empty()) free_.push_front({mapHugePage(), {}, {}});
        half_.splice(half_.begin(), free_, free_.begin());
        half_.front().isTaken[0] = true;
        return {half_.begin(), 0};
    }

    std::mutex lock_;
    std::list<Half::Page> half_;  // of which one half is taken
    std::list<Half::Page> full_;
    std::list<Half::Page> free_;
};

}  // namespace

std::shared_ptr<char> makePixelMemory(size_t size) {
    if (size != kTileBytes) return {mapPages(size), [size](char* start) { munmap(start, size); }};
    static const auto kPages = std::make_shared<TilePages>();
    const TilePages::Half half = kPages->take();
    // The pages outlive every image.
    return {half.start(), [pages = kPages, half](char* /*start*/) { pages->giveBack(half); }};
}

}  // namespace tzhost
