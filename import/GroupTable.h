// The numbered groups of a document: which number each "g" element got, and the tags of the shapes below it.
// Filled by the group capture, read by the group tags.
#pragma once

#include <QDomElement>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "import/NodeIdentity.h"

namespace tzsvg {

// What the group tags of a group's shapes say.
struct GroupTexts {
    std::string number;
    std::string name;   // its "id", may be empty
    std::string chain;  // the names of the consecutive enclosing groups, outermost first, joined by ";"
};

class GroupTable {
  public:
    void reset() noexcept;

    // Gives a group the next number, from 1 on.
    void record(const QDomElement& group);

    std::optional<unsigned> numberOf(const QDomNode& node) const;

    // The texts for the shapes of a parent; null when it is not a numbered group. Worked out once for shapes
    // that follow one another; valid until the next call.
    const GroupTexts* textsOf(const QDomNode& parent);

  private:
    std::vector<QDomElement> groups_;  // by number - 1; keeps the nodes alive, so that identities stay theirs
    std::unordered_map<NodeIdentity, unsigned> numbers_;
    NodeIdentity lastParent_ = nullptr;
    GroupTexts lastTexts_;
};

}  // namespace tzsvg
