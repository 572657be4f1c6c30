// The children of one element, in the order in which drawing indices place them. The root and every group of
// a save has one; polygons are placed in it as they are written, and it is applied when all are.
#pragma once

#include <cstdint>
#include <vector>

#include "export/OutputDocument.h"

namespace tzsvg {

// Placing costs no walk over the siblings: only the position is noted, and where everything ends up is worked
// out once. n children cost n log n, in whatever order they are placed.
class ChildOrder {
  public:
    explicit ChildOrder(OutputElement& parent) : parent_(parent) {}

    // Places an element before the child that stands at that index; behind the last when there is none. The
    // children that the parent has when the first element is placed count as well. So elements that are all
    // placed at 0, those without an index, come out in reverse order. Meant so: otherwise existing scenes
    // would be saved stacked the other way round. Saver/scenes (zorder) pins it.
    void place(const OutputNode& node, uint32_t index);

    // Places an element behind the last child.
    void append(OutputElement& element) { place(&element, UINT32_MAX); }

    // Makes the placed nodes children of the parent. Called once; the parent's children are left alone
    // between the first placing and here.
    void apply();

  private:
    OutputElement& parent_;
    bool adopted_ = false;
    std::vector<OutputNode> children_;  // in the order of their placement
    std::vector<uint32_t> positions_;   // where each stood when it was placed
};

}  // namespace tzsvg
