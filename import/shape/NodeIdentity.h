// The identity of a DOM node as a key. The toolkit compares nodes with ==, but has no hash for them, and a
// node's line and column do not tell it from others: clones have none.
#pragma once

#include <QDomNode>

namespace tzsvg {

using NodeIdentity = const void*;

// Equal for two handles of one node, and different for two nodes as long as both live.
inline NodeIdentity identityOf(const QDomNode& node) {
    // The node's implementation is a protected member; a pointer to member formed in a derived class reaches
    // it.
    struct Access : QDomNode {
        static NodeIdentity of(const QDomNode& target) { return target.*(&Access::impl); }
    };
    return Access::of(node);
}

}  // namespace tzsvg
