// A tag in a run: its ID, the size of its text, its text; unaligned.
#include "host/scene/Tags.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "hostsdk/CTzError.h"

namespace tzhost {
namespace {

struct TagHeader {
    TzTagId id;
    uint32_t size;
};

constexpr size_t kLargestChunk = size_t{1} << 20U;

}  // namespace

bool TagReader::next() {
    if (at_ == end_) return false;
    TagHeader header{};
    std::memcpy(&header, at_, sizeof header);
    id_ = header.id;
    text_ = {at_ + sizeof header, header.size};
    at_ += sizeof header + header.size;
    return true;
}

std::optional<std::string_view> findTag(const TagRun& run, TzTagId id) {
    for (TagReader tags(run); tags.next();) {
        if (tags.id() == id) return tags.text();
    }
    return std::nullopt;
}

void TagArena::set(TagRun& run, TzTagId id, std::string_view text) {
    const std::optional<std::string_view> present = findTag(run, id);
    if (!present) {
        add(run, id, text);
    } else if (present->size() == text.size()) {
        std::copy(text.begin(), text.end(), run.bytes + (present->data() - run.bytes));
    } else {
        TagRun rebuilt;
        for (TagReader tags(run); tags.next();) add(rebuilt, tags.id(), tags.id() == id ? text : tags.text());
        run = rebuilt;
    }
}

void TagArena::add(TagRun& run, TzTagId id, std::string_view text) {
    constexpr size_t kLongestRun = std::numeric_limits<uint32_t>::max() - sizeof(TagHeader);
    if (text.size() > kLongestRun - run.size) throw CTzError(kTzOutOfMemory);
    char* const place = extend(run, sizeof(TagHeader) + text.size());
    const TagHeader header{id, static_cast<uint32_t>(text.size())};
    std::memcpy(place, &header, sizeof header);
    std::copy(text.begin(), text.end(), place + sizeof header);
}

char* TagArena::extend(TagRun& run, size_t more) {
    const bool last = run.bytes && run.bytes + run.size == free_;
    if (!last || freeSize_ < more) {
        const size_t needed = run.size + more;
        if (freeSize_ < needed) {
            const size_t size = std::max(needed, nextChunk_);
            // Not value-initialised: every byte is written before it is read.
            chunks_.push_back(std::unique_ptr<char[]>(new char[size]));
            nextChunk_ = std::min(2 * nextChunk_, kLargestChunk);
            free_ = chunks_.back().get();
            freeSize_ = size;
        }
        std::copy_n(run.bytes, run.size, free_);
        run.bytes = free_;
        free_ += run.size;
        freeSize_ -= run.size;
    }
    char* const place = free_;
    free_ += more;
    freeSize_ -= more;
    run.size += static_cast<uint32_t>(more);
    return place;
}

}  // namespace tzhost
