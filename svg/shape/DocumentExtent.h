// The bounds of one element, and the largest y of a document, about which the import flips the y axis.
#pragma once

#include <QPainterPath>
#include <optional>
#include <utility>
#include <vector>

#include "svg/text/Length.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {

// The paths that were parsed to measure a document, kept for its walk, which needs them again: path data is
// most of what a drawing of paths consists of. Filled by documentMaxY(), emptied by the converters.
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

// Bounds in user units.
struct ElementBounds {
    double minX, maxX, minY, maxY;
};

// The bounds of one element under its own transform alone: ancestors' are not applied. Control points and a
// trailing move count. Zero bounds for a node that is no shape element. False, with zero bounds, when the
// shape item cannot be built or the transform does not parse. May be infinite or not numbers where lengths
// are.
bool elementBounds(const XmlNode& node, const LengthContext& lengths, ElementBounds& bounds,
                   ParsedPaths* paths = nullptr);

// The larger of the bounds' y; 0.0 when there are none. `ok` tells whether the bounds could be had.
double elementMaxY(const XmlNode& node, const LengthContext& lengths, bool& ok, ParsedPaths* paths = nullptr);

// The largest y of all shape elements below a node, at least 0.0; descends into every element, definitions
// too. `ok` is false when the bounds of one fail. May be infinite. `paths`, when given, receives the paths
// parsed.
double documentMaxY(const XmlNode& root, const LengthContext& lengths, bool& ok,
                    ParsedPaths* paths = nullptr);

}  // namespace tzsvg
