// See the header.
#include "import/GroupTable.h"

namespace tzsvg {
namespace {

std::string nameOf(const QDomNode& group) {
    return group.toElement().attribute(QStringLiteral("id")).toStdString();
}

}  // namespace

void GroupTable::reset() noexcept {
    groups_.clear();
    numbers_.clear();
    lastParent_ = nullptr;
}

void GroupTable::record(const QDomElement& group) {
    groups_.push_back(group);
    numbers_.emplace(identityOf(group), static_cast<unsigned>(groups_.size()));
}

std::optional<unsigned> GroupTable::numberOf(const QDomNode& node) const {
    const auto found = numbers_.find(identityOf(node));
    if (found == numbers_.end()) return std::nullopt;
    return found->second;
}

const GroupTexts* GroupTable::textsOf(const QDomNode& parent) {
    if (lastParent_ == identityOf(parent)) return &lastTexts_;
    const auto number = numberOf(parent);
    if (!number) return nullptr;
    lastTexts_ = {std::to_string(*number), nameOf(parent), {}};
    // The chain ends at the first ancestor that is no numbered group. A group without a name leaves the chain
    // empty at its inner end, and a leading ";" further out; meant so, GroupTags/unnamedGroups pins it.
    std::string& chain = lastTexts_.chain;
    for (QDomNode group = parent; !group.isNull() && numberOf(group); group = group.parentNode()) {
        if (!chain.empty()) chain.insert(0, 1, ';');
        chain.insert(0, nameOf(group));
    }
    lastParent_ = identityOf(parent);
    return &lastTexts_;
}

}  // namespace tzsvg
