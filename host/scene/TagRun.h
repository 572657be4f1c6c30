// The string tags of polygons, compactly: a polygon's tags stand one after the other in one run of bytes, and
// the runs stand in an arena. A million polygons with ten tags each are ten million short texts; this way a
// tag costs eight bytes and its text. Used by MeshData.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "hostsdk/TzTypes.h"

namespace tzhost {

// The tags of one polygon. A plain record that points into the arena that made it.
struct TagRun {
    char* bytes = nullptr;
    uint32_t size = 0;
};

// Reads a run in the order of the tags' creation:
//     for (TagReader tags(run); tags.next();) use(tags.id(), tags.text());
class TagReader {
  public:
    explicit TagReader(const TagRun& run) : at_(run.bytes), end_(run.bytes + run.size) {}

    bool next();
    TzTagId id() const { return id_; }
    std::string_view text() const { return text_; }

  private:
    const char* at_;
    const char* end_;
    TzTagId id_ = 0;
    std::string_view text_;
};

std::optional<std::string_view> findTag(const TagRun& run, TzTagId id);

class TagArena {
  public:
    // Sets a tag: replaces the text of the one of that ID, which keeps its place, or adds one. Throws
    // kTzOutOfMemory when the run grows beyond 32 bits; the run is unchanged then.
    void set(TagRun& run, TzTagId id, std::string_view text);

    // Adds a tag of an ID that the run does not have.
    void add(TagRun& run, TzTagId id, std::string_view text);

  private:
    // Room for `more` bytes at the end of the run: where it is, when it is the last in the arena, else in a
    // copy.
    char* extend(TagRun& run, size_t more);

    std::vector<std::unique_ptr<char[]>> chunks_;
    char* free_ = nullptr;
    size_t freeSize_ = 0;
    size_t nextChunk_ = 1024;  // doubled up to kLargestChunk: small scenes stay small
};

}  // namespace tzhost
