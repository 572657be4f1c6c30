// The paths that the measuring of the document has parsed, kept for the walk, which needs them again: path
// data is most of what a drawing of paths consists of. Filled by documentMaxY(), emptied by the converters.
#pragma once

#include <QPainterPath>
#include <optional>
#include <utility>
#include <vector>

namespace tzsvg {

class XmlNode;

class ParsedPaths {
  public:
    // Paths come in document order.
    void keep(const XmlNode& node, const QPainterPath& path) { paths_.emplace_back(&node, path); }

    // The path of a node, which is not kept any longer; nothing when it was not parsed. Nodes come in
    // document order, too: what stands before this one is passed over.
    std::optional<QPainterPath> take(const XmlNode& node) {
        while (next_ < paths_.size()) {
            auto& [owner, path] = paths_[next_++];
            if (owner == &node) return std::exchange(path, {});
        }
        return std::nullopt;
    }

    void clear() { *this = ParsedPaths(); }

  private:
    std::vector<std::pair<const XmlNode*, QPainterPath>> paths_;
    size_t next_ = 0;
};

}  // namespace tzsvg
