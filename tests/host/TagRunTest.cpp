// The compact tags of polygons, held against a plain list.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "host/core/Utf8.h"
#include "host/scene/Tags.h"

using namespace tzhost;

namespace {

using PlainTags = std::vector<std::pair<TzTagId, std::string>>;

PlainTags readAll(const TagRun& run) {
    PlainTags all;
    for (TagReader tags(run); tags.next();) all.emplace_back(tags.id(), tags.text());
    return all;
}

// Tags set in any order on several polygons at once, with texts from empty to larger than a chunk.
TEST(TagRun, KeepsWhatAPlainListKeeps) {
    std::mt19937 random(7);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same sequence every time
    const auto below = [&](uint32_t bound) { return static_cast<uint32_t>(random() % bound); };
    TagArena arena;
    std::vector<TagRun> runs(5);
    std::vector<PlainTags> plain(runs.size());
    for (int step = 0; step < 5000; ++step) {
        const size_t polygon = below(static_cast<uint32_t>(runs.size()));
        const TzTagId id = below(12);
        const std::string text(step % 1000 == 0 ? 1'500'000 : below(20), static_cast<char>('a' + step % 26));
        arena.set(runs[polygon], id, text);
        PlainTags& tags = plain[polygon];
        const auto present =
            std::find_if(tags.begin(), tags.end(), [&](const auto& tag) { return tag.first == id; });
        if (present == tags.end()) {
            tags.emplace_back(id, text);
        } else {
            present->second = text;
        }
        ASSERT_TRUE(readAll(runs[polygon]) == tags) << "step " << step;
    }
    for (size_t i = 0; i < runs.size(); ++i) EXPECT_TRUE(readAll(runs[i]) == plain[i]) << "polygon " << i;
}

TEST(Utf8, TellsWellFormedText) {
    struct Row {
        const char* what;
        std::string_view text;
        bool good;
    };
    const Row rows[] = {
        {"empty", "", true},
        {"ASCII longer than a word", "abcdefghijklmnopq", true},
        {"two, three, four bytes", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", true},
        {"last code point", "\xF4\x8F\xBF\xBF", true},
        {"broken after a word of ASCII", "abcdefgh\xC3", false},
        {"lone continuation", "a\x80", false},
        {"overlong slash", "\xC0\xAF", false},
        {"overlong three bytes", "\xE0\x9F\xBF", false},
        {"surrogate", "\xED\xA0\x80", false},
        {"overlong four bytes", "\xF0\x8F\xBF\xBF", false},
        {"beyond the last code point", "\xF4\x90\x80\x80", false},
        {"cut short", "\xF0\x9F\x98", false},
        {"Latin-1", "caf\xE9 au lait", false},
    };
    for (const Row& row : rows) EXPECT_EQ(row.good, isUtf8(row.text)) << row.what;
}

TEST(Utf8, MakesAnythingOneLine) {
    EXPECT_EQ("a\\x0Ab\\x7F\xC3\xA4\xEF\xBF\xBD", toOneLine("a\nb\x7F\xC3\xA4\xFF"));
    EXPECT_EQ("ab...", toOneLine("ab\xC3\xA4", 3)) << "cut between characters";
}

}  // namespace
