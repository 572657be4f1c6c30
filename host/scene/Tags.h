// Tags: their IDs as texts, and the tags of polygons in a compact form. Used by the scene and all that reads
// it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hostsdk/TzTypes.h"

namespace tzhost {

// ---- Tag IDs and polygon types as the four ASCII characters that they are in scene files and messages ----

constexpr bool isTagName(TzTagId id) {
    return (id & 0x80808080U) == 0;
}

inline std::string tagName(TzTagId id) {
    return {static_cast<char>(id >> 24U), static_cast<char>(id >> 16U), static_cast<char>(id >> 8U),
            static_cast<char>(id)};
}

// Nothing when the text is not four ASCII characters.
inline std::optional<TzTagId> tagFromName(std::string_view name) {
    if (name.size() != 4) return std::nullopt;
    TzTagId id = 0;
    for (const char character : name) id = (id << 8U) | static_cast<unsigned char>(character);
    return isTagName(id) ? std::optional<TzTagId>(id) : std::nullopt;
}

// ---- The tags of polygons ----
//
// A polygon's tags stand one after the other in one run of bytes, and the runs stand in an arena. A million
// polygons with ten tags each are ten million short texts; this way a tag costs eight bytes and its text.

// The tags of one polygon. A plain pointer into the arena that made it.
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
