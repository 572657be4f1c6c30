// The transform of an element: its own, and with all its ancestors'.
#pragma once

#include <QTransform>
#include <vector>

#include "svg/tree/XmlNode.h"

namespace tzsvg {

// The element's own "transform"; the identity for other nodes and when it is absent or empty. False, with the
// identity, when it does not parse.
bool elementTransform(const XmlNode& node, QTransform& transform);

// The transform from the element's user coordinates to the document's: its own first, then its parent's, and
// so on up to the root. False, with the identity, when one of them does not parse.
bool accumulatedTransform(const XmlNode& node, QTransform& transform);

// The same for a depth-first walk: each ancestor's attribute is parsed once, not once for every shape below
// it. The products are formed in the same order, so the results are equal to the last bit.
class AncestorTransforms {
  public:
    // The walk goes down from this node, or comes back up to it.
    void push(const XmlNode& node);
    void pop() { levels_.pop_back(); }

    // As accumulatedTransform() for a child of the node pushed last.
    bool accumulated(const XmlNode& node, QTransform& transform) const {
        return elementTransform(node, transform) && addAncestors(transform);
    }

  private:
    bool addAncestors(QTransform& transform) const;

    struct Level {
        QTransform own;
        bool parsed;
        size_t next;  // the index + 1 of the nearest level above that is not a plain identity; 0 for none
    };
    std::vector<Level> levels_;
};

}  // namespace tzsvg
