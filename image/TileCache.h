// The rendered tiles of one image, shared between threads. CSVGImage asks it for every tile.
//
// Entries stand in shards, each with its lock, so that threads that read different tiles rarely meet. What a
// shard's lock guards: the table and all fields of its entries but the entry's own lock. An entry's lock is a
// mutex of the host; it is held while the tile is rendered, and late comers wait for it. Locks are taken in
// the order entry, shard; nothing but counting is called on host images while a shard is locked.
//
// Invariants: an entry with users (threads on their way to its tile) is not erased and keeps its image. An
// image comes out with the caller's reference taken under the shard's lock, so that a trim, which drops an
// image under the same lock and only when the cache's reference is the only one, never drops what a caller
// has.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "hostsdk/CTzUser_Image.h"
#include "image/LevelTable.h"

namespace tzsvg {

class TileCache {
  public:
    using Time = std::chrono::steady_clock::time_point;

    struct Settings {
        // Bytes of rendered tiles at which a trim begins. Counted as the 8-bit pixels they were rendered to.
        uint64_t limit = 0x20000000;
        // A steady clock: the wall clock jumps at midnight and when it is set.
        Time (*now)() noexcept = std::chrono::steady_clock::now;
    };

    // A tile as rendered: what it counts for, and the number of the document that it shows.
    struct Rendered {
        CTzPtr<ITzImage> image;
        uint64_t bytes = 0;
        uint64_t document = 0;
    };

    // The guard and the locks of the entries come from the host.
    TileCache(CTzUser_ThreadService threads, Settings settings);
    TileCache(const TileCache&) = delete;
    TileCache& operator=(const TileCache&) = delete;

    // The image of a tile; `render()`, which returns a Rendered, is called when there is none yet, or when
    // the one there is stale: shows another document than the tile rendered last. What it throws comes out,
    // and the next request tries again.
    template <class Render>
    CTzPtr<ITzImage> tile(const TileKey& key, Render&& render) {
        if (CTzPtr<ITzImage> image = find(pack(key))) return image;
        return renderOnce(pack(key), std::ref(render));
    }

    // The bytes that the tiles count for at the moment.
    uint64_t bytes() const { return bytes_.load(std::memory_order_relaxed); }

  private:
    using Key = uint64_t;

    struct Entry {
        CTzUser_ThreadMutex lock;
        CTzPtr<ITzImage> image;  // set when rendered
        uint64_t bytes = 0;
        uint64_t document = 0;
        Time lastUse;
        uint32_t users = 0;
    };

    using Table = std::unordered_map<Key, Entry>;  // entries do not move

    struct alignas(64) Shard {
        std::mutex lock;
        Table entries;
    };

    class Pin;

    struct Candidate {
        Time lastUse;
        Key key;
    };

    static Key pack(const TileKey& key) {
        return (uint64_t{key.level} << 48U) | (uint64_t{key.column} << 24U) | key.row;
    }

    Shard& shardOf(Key key);
    bool isStale(const Entry& entry) const;
    CTzPtr<ITzImage> find(Key key);
    CTzPtr<ITzImage> renderOnce(Key key, const std::function<Rendered()>& render);
    CTzPtr<ITzImage> admit(Shard& shard, Entry& entry, Rendered tile);

    void trim();
    std::vector<Candidate> candidates();
    void dropLeastRecentlyUsed(uint64_t target);

    std::array<Shard, 64> shards_;
    CTzUser_ThreadService threads_;
    CTzUser_ThreadGuard trimGuard_;
    Settings settings_;
    std::atomic<uint64_t> bytes_{0};
    std::atomic<uint64_t> document_{0};  // the latest document that a tile was rendered from
    std::atomic<Time> lastTrim_;
};

}  // namespace tzsvg
