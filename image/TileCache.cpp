#include "image/TileCache.h"

#include <algorithm>
#include <utility>

namespace tzsvg {

// One thread on its way to a tile: the entry is there, and stays, for as long as the pin lives.
class TileCache::Pin {
  public:
    // `lock` becomes the entry's when it is new.
    Pin(Shard& shard, Key key, CTzUser_ThreadMutex lock) : shard_(shard), key_(key) {
        const std::lock_guard held(shard_.lock);
        const auto [at, inserted] = shard_.entries.try_emplace(key);
        entry_ = &at->second;
        if (inserted) entry_->lock = std::move(lock);
        ++entry_->users;
    }
    Pin(const Pin&) = delete;
    Pin& operator=(const Pin&) = delete;

    // The last to leave an entry that could not be rendered takes it away.
    ~Pin() {
        Table::node_type dropped;
        const std::lock_guard held(shard_.lock);
        if (--entry_->users == 0 && !entry_->image) dropped = shard_.entries.extract(key_);
    }

    Entry& entry() const { return *entry_; }

  private:
    Shard& shard_;
    Key key_;
    Entry* entry_ = nullptr;
};

TileCache::TileCache(CTzUser_ThreadService threads, Settings settings)
    : threads_(std::move(threads)),
      trimGuard_(threads_.createGuard()),
      settings_(settings),
      lastTrim_(settings_.now()) {}

TileCache::Shard& TileCache::shardOf(Key key) {
    constexpr uint64_t kSpread = 0x9E3779B97F4A7C15U;  // neighbours go to different shards
    return shards_[(key * kSpread) >> 58U];
}

bool TileCache::isStale(const Entry& entry) const {
    return entry.document != document_.load(std::memory_order_relaxed);
}

// The image of an entry that is rendered and not stale, else nothing.
CTzPtr<ITzImage> TileCache::find(Key key) {
    const Time now = settings_.now();
    Shard& shard = shardOf(key);
    const std::lock_guard held(shard.lock);
    const auto at = shard.entries.find(key);
    if (at == shard.entries.end() || !at->second.image || isStale(at->second)) return {};
    at->second.lastUse = now;
    return at->second.image;
}

CTzPtr<ITzImage> TileCache::renderOnce(Key key, const std::function<Rendered()>& render) {
    Shard& shard = shardOf(key);
    const Pin pin(shard, key, threads_.createMutex());
    CTzPtr<ITzImage> image;
    {
        const std::lock_guard held(pin.entry().lock);
        image = find(key);  // another thread may have rendered it meanwhile
        if (image) return image;
        image = admit(shard, pin.entry(), render());
    }
    trim();
    return image;
}

CTzPtr<ITzImage> TileCache::admit(Shard& shard, Entry& entry, Rendered tile) {
    uint64_t latest = document_.load(std::memory_order_relaxed);
    while (latest < tile.document && !document_.compare_exchange_weak(latest, tile.document)) {
    }
    CTzPtr<ITzImage> image = tile.image;
    const Time now = settings_.now();
    const std::lock_guard held(shard.lock);
    bytes_ += tile.bytes;
    bytes_ -= std::exchange(entry.bytes, tile.bytes);
    std::swap(entry.image, tile.image);  // an old image goes with `tile`, after the lock
    entry.document = tile.document;
    entry.lastUse = now;
    return image;
}

// ---- Trimming -----------------------------------------------------------------------------------

void TileCache::trim() {
    if (bytes() < settings_.limit) return;
    const auto sinceLast = settings_.now() - lastTrim_.load(std::memory_order_relaxed);
    if (std::chrono::duration_cast<std::chrono::seconds>(sinceLast).count() <= 4) return;
    {
        const CTzUser_ThreadGuard::Visit visit(trimGuard_);
        if (visit.count() < 2)
            dropLeastRecentlyUsed(static_cast<uint64_t>(0.9 * static_cast<double>(settings_.limit)));
    }
    lastTrim_.store(settings_.now(), std::memory_order_relaxed);
}

// The rendered entries that nobody is on the way to, least recently used first.
std::vector<TileCache::Candidate> TileCache::candidates() {
    std::vector<Candidate> found;
    for (Shard& shard : shards_) {
        const std::lock_guard held(shard.lock);
        for (const auto& [key, entry] : shard.entries) {
            if (entry.image && entry.users == 0) found.push_back({entry.lastUse, key});
        }
    }
    std::sort(found.begin(), found.end(),
              [](const Candidate& a, const Candidate& b) { return a.lastUse < b.lastUse; });
    return found;
}

void TileCache::dropLeastRecentlyUsed(uint64_t target) {
    for (const Candidate& candidate : candidates()) {
        if (bytes() <= target) return;
        Table::node_type dropped;  // goes after the lock
        Shard& shard = shardOf(candidate.key);
        const std::lock_guard held(shard.lock);
        const auto at = shard.entries.find(candidate.key);
        if (at == shard.entries.end()) continue;
        Entry& entry = at->second;
        // Used since it was listed, on the way to be, or held outside: what release() returns is exact.
        if (entry.lastUse != candidate.lastUse || entry.users != 0 || !entry.image) continue;
        entry.image->retain();
        if (entry.image->release() != 1) continue;
        bytes_ -= entry.bytes;
        dropped = shard.entries.extract(at);
    }
}

}  // namespace tzsvg
