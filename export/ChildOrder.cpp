// Tested by tests/export/ChildOrderTest.cpp against placing one by one.
#include "export/ChildOrder.h"

#include <algorithm>
#include <utility>

namespace tzsvg {
namespace {

// The places of a list that are still free, counted in a Fenwick tree.
class FreePlaces {
  public:
    explicit FreePlaces(size_t count) : tree_(count + 1) {
        for (size_t i = 1; i <= count; ++i) tree_[i] = static_cast<uint32_t>(i & (~i + 1));
        while (top_ * 2 <= count) top_ *= 2;
    }

    // Takes the free place that has `index` free places before it.
    size_t take(uint32_t index) {
        size_t place = 0;
        for (size_t step = top_; step > 0; step /= 2) {
            const size_t next = place + step;
            if (next >= tree_.size()) continue;
            if (tree_[next] <= index) {
                index -= tree_[next];
                place = next;
            } else {
                --tree_[next];  // the place taken lies in this range
            }
        }
        return place;
    }

  private:
    std::vector<uint32_t> tree_;
    size_t top_ = 1;
};

}  // namespace

void ChildOrder::place(const OutputNode& node, uint32_t index) {
    if (!adopted_) {
        adopted_ = true;
        children_ = std::move(parent_.children());
        for (uint32_t i = 0; i < children_.size(); ++i) positions_.push_back(i);
    }
    const auto count = static_cast<uint32_t>(children_.size());
    positions_.push_back(std::min(index, count));
    children_.push_back(node);
}

void ChildOrder::apply() {
    if (!adopted_) return;
    // The last one stands where it was placed; before it, each stands at its position among the places that
    // the later ones left free.
    FreePlaces free(children_.size());
    std::vector<OutputNode>& order = parent_.children();
    order.assign(children_.size(), OutputNode());
    for (size_t i = children_.size(); i-- > 0;) order[free.take(positions_[i])] = std::move(children_[i]);
    children_ = {};
    positions_ = {};
}

}  // namespace tzsvg
