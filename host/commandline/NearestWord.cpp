#include "host/commandline/NearestWord.h"

#include <algorithm>

namespace tzhost {
namespace {

// The optimal string alignment distance, row by row; it looks two rows back for exchanged letters.
size_t distance(std::string_view a, std::string_view b) {
    std::vector<size_t> twoBack;
    std::vector<size_t> back(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j) back[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        std::vector<size_t> row(b.size() + 1);
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t changed = back[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({back[j] + 1, row[j - 1] + 1, changed});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], twoBack[j - 2] + 1);
        }
        twoBack = std::move(back);
        back = std::move(row);
    }
    return back[b.size()];
}

}  // namespace

std::string nearestWord(std::string_view typed, const std::vector<std::string>& words) {
    std::string nearest;
    size_t fewest = std::string_view::npos;
    for (const std::string& word : words) {
        const size_t changes = distance(typed, word);
        if (changes * 3 > word.size() + 1 || changes >= fewest) continue;
        fewest = changes;
        nearest = word;
    }
    return nearest;
}

}  // namespace tzhost
