// The groups of the document being written: the elements of one package's group records, found by the number
// or the name that a polygon's tags give.
#pragma once

#include <QString>
#include <deque>
#include <string>
#include <unordered_map>

#include "export/ChildOrder.h"

namespace tzsvg {

// Group numbers belong to the mesh whose package has the records: there is one of these for each text.
class OutputGroups {
  public:
    // Makes the elements of the records in a text, the outermost ones as last children of the root. False
    // when the records are malformed, a number comes twice, a parent does not stand before its child, or the
    // groups are nested deeper than a document may be.
    bool build(const QString& records, OutputDocument& document, OutputElement& root);

    // The children of a group, by its number; by its "id", when exactly one group has it. Null when there is
    // none.
    ChildOrder* byNumber(uint32_t number);
    ChildOrder* byName(const std::string& name);

    // Makes what was placed children of the groups.
    void apply();

  private:
    struct Group {
        OutputElement* element;
        int level;  // in the document; the root's is 1
        ChildOrder children;
    };

    std::deque<Group> groups_;
    std::unordered_map<uint32_t, Group*> byNumber_;
    std::unordered_map<std::string, Group*> byName_;  // null for a name that several have
};

}  // namespace tzsvg
