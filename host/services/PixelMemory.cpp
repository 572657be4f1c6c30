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
        if (half.page->isWritten[half.index]) std::memset(half.start(), 0, kTileBytes);
        half.page->isWritten[half.index] = true;
        madvise(half.start(), kTileBytes, MADV_POPULATE_WRITE);  // where the page is not a huge one
        return half;
    }

    void giveBack(const Half& half) noexcept {
        std::list<Half::Page> gone;
        {
            const std::lock_guard held(lock_);
            half.page->isTaken[half.index] = false;
            const bool isFree = !half.page->isTaken[1 - half.index];
            std::list<Half::Page>& to = isFree ? gone : pages_;
            to.splice(to.begin(), pages_, half.page);
        }
        if (!gone.empty()) munmap(gone.front().start, kHugePage);
    }

  private:
    Half takeHalf() {
        const std::lock_guard held(lock_);
        if (pages_.empty() || (pages_.front().isTaken[0] && pages_.front().isTaken[1]))
            pages_.push_front({mapHugePage(), {}, {}});
        const auto page = pages_.begin();
        const size_t index = page->isTaken[0] ? 1 : 0;
        page->isTaken[index] = true;
        if (page->isTaken[1 - index]) pages_.splice(pages_.end(), pages_, page);
        return {page, index};
    }

    std::mutex lock_;
    std::list<Half::Page> pages_;  // those with a free half first
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
