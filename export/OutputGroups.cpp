#include "export/OutputGroups.h"

#include "export/GroupRecords.h"
#include "svg/tree/DocumentLimits.h"

namespace tzsvg {

bool OutputGroups::build(const QString& records, OutputDocument& document, OutputElement& root) {
    std::vector<GroupRecord> list;
    if (!readGroupRecords(records, list)) return false;
    for (const GroupRecord& record : list) {
        Group* parent = nullptr;
        if (record.parent) {
            const auto found = byNumber_.find(*record.parent);
            // Groups inside definitions come back with these, as text. The loader numbers them all and
            // records only those that are a level deeper: they have no parent here, and such a document is
            // refused.
            if (found == byNumber_.end()) return false;
            parent = found->second;
        }
        const int level = (parent ? parent->level : 1) + 1;
        if (level > kMaxElementDepth) return false;

        OutputElement& element = document.makeElement(QStringLiteral("g"));
        for (const auto& [name, value] : record.attributes) element.attributes().set(name, value);
        (parent ? *parent->element : root).children().emplace_back(&element);

        Group& group = groups_.emplace_back(Group{&element, level, ChildOrder(element)});
        if (!byNumber_.emplace(record.number, &group).second) return false;
        const std::string name = element.attributes().value(QStringLiteral("id")).toStdString();
        if (!name.empty()) {
            const auto [entry, isNew] = byName_.emplace(name, &group);
            if (!isNew) entry->second = nullptr;
        }
    }
    return true;
}

ChildOrder* OutputGroups::byNumber(uint32_t number) {
    const auto found = byNumber_.find(number);
    return found == byNumber_.end() ? nullptr : &found->second->children;
}

ChildOrder* OutputGroups::byName(const std::string& name) {
    const auto found = byName_.find(name);
    return found == byName_.end() || !found->second ? nullptr : &found->second->children;
}

void OutputGroups::apply() {
    for (Group& group : groups_) group.children.apply();
}

}  // namespace tzsvg
