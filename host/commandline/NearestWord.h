// What somebody may have meant who typed a word that is not known.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tzhost {

// The word that takes the fewest changes to become: a letter more, less, or another, or two exchanged. Empty
// when every one takes changes to more than a third of its letters.
std::string nearestWord(std::string_view typed, const std::vector<std::string>& words);

}  // namespace tzhost
