// The paths that the measuring of the document has parsed, kept for the walk, which needs them again: path
// data is most of what a drawing of paths consists of. Filled by documentMaxY(), emptied by the path
// converter.
#pragma once

#include <QDomNode>
#include <QPainterPath>
#include <optional>
#include <unordered_map>

#include "import/shape/NodeIdentity.h"

namespace tzsvg {

class ParsedPaths {
  public:
    void keep(const QDomNode& node, const QPainterPath& path) { paths_.emplace(identityOf(node), path); }

    // The path of a node, which is not kept any longer; nothing when it was not parsed, or not as this node.
    std::optional<QPainterPath> take(const QDomNode& node) {
        const auto found = paths_.find(identityOf(node));
        if (found == paths_.end()) return std::nullopt;
        QPainterPath path = std::move(found->second);
        paths_.erase(found);
        return path;
    }

    // Identities are good as long as the nodes live: whoever takes nodes out of the document clears this.
    void clear() { *this = ParsedPaths(); }

  private:
    std::unordered_map<NodeIdentity, QPainterPath> paths_;
};

}  // namespace tzsvg
