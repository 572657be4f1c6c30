#include "import/GroupTable.h"

#include <algorithm>

namespace tzsvg {

void GroupTable::reset() noexcept {
    *this = GroupTable();  // frees the memory as well, which costs less before the tree is freed than after
}

void GroupTable::record(const XmlNode& group) {
    const unsigned parent = numberOf(*group.parent()).value_or(0);
    groups_.push_back({&group, parent, parent == 0 ? 0 : this->group(parent).level + 1});
    numbers_.emplace(&group, static_cast<unsigned>(groups_.size()));
}

std::optional<unsigned> GroupTable::numberOf(const XmlNode& node) const {
    const auto found = numbers_.find(&node);
    if (found == numbers_.end()) return std::nullopt;
    return found->second;
}

const GroupTexts* GroupTable::textsOf(const XmlNode& parent) {
    const auto number = numberOf(parent);
    if (!number) return nullptr;
    if (!path_.empty() && path_.back().number == *number) return &lastTexts_;
    enter(*number);

    // The chain ends at the first ancestor that is no numbered group. A group without a name leaves the chain
    // empty at its inner end, and a leading ";" further out; meant so, Tags/groupsOneAfterAnother pins it.
    const auto innermost = std::find_if(path_.rbegin(), path_.rend(),
                                        [](const Step& step) { return step.nameEnd > step.nameBegin; });
    const std::string_view names = names_;
    const Step& last = path_.back();
    lastNumber_ = std::to_string(*number);
    lastTexts_ = {lastNumber_, names.substr(last.nameBegin, last.nameEnd - last.nameBegin),
                  names.substr(0, innermost == path_.rend() ? 0 : innermost->nameEnd)};
    return &lastTexts_;
}

// Leaves the path's groups that do not enclose this one, and goes down to it.
void GroupTable::enter(unsigned number) {
    std::vector<unsigned> entered;  // innermost first
    const auto onPath = [&](size_t level, unsigned n) {
        return level < path_.size() && path_[level].number == n;
    };
    while (number != 0 && !onPath(group(number).level, number)) {
        entered.push_back(number);
        number = group(number).parent;
    }
    path_.resize(number == 0 ? 0 : group(number).level + 1);
    names_.resize(path_.empty() ? 0 : path_.back().nameEnd);

    for (auto next = entered.rbegin(); next != entered.rend(); ++next) {
        if (!path_.empty()) names_ += ';';
        const size_t begin = names_.size();
        names_ += group(*next).element->attribute(Attribute::kId).toUtf8().toStdString();
        path_.push_back({*next, begin, names_.size()});
    }
}

}  // namespace tzsvg
