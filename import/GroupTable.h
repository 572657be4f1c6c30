// The numbered groups of a document: which number each "g" element got, and the tags of the shapes below it.
// Filled by the group capture, read by the group tags.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "svg/tree/XmlNode.h"

namespace tzsvg {

// What the group tags of a group's shapes say. Views into the table.
struct GroupTexts {
    std::string_view number;
    std::string_view name;   // its "id", may be empty
    std::string_view chain;  // the names of the consecutive enclosing groups, outermost first, joined by ";"
};

class GroupTable {
  public:
    void reset() noexcept;

    // Gives a group the next number, from 1 on. Groups come in document order.
    void record(const XmlNode& group);

    std::optional<unsigned> numberOf(const XmlNode& node) const;

    // The texts for the shapes of a parent; null when it is not a numbered group. Valid until the next call.
    // In a depth-first walk each group is worked out once, not again for every group or shape below it.
    const GroupTexts* textsOf(const XmlNode& parent);

  private:
    struct Group {
        const XmlNode* element;
        unsigned parent;  // the number of the numbered group directly above; 0 for none
        size_t level;     // how many numbered groups lie above it without a gap
    };
    // A group on the way from the outermost group down to the one asked for last.
    struct Step {
        unsigned number;
        size_t nameBegin;  // its name's place in names_
        size_t nameEnd;
    };

    const Group& group(unsigned number) const { return groups_[number - 1]; }
    void enter(unsigned number);

    std::vector<Group> groups_;  // by number - 1
    std::unordered_map<const XmlNode*, unsigned> numbers_;

    std::vector<Step> path_;  // by level
    std::string names_;       // of the path, joined by ";"
    std::string lastNumber_;
    GroupTexts lastTexts_;
};

}  // namespace tzsvg
