// See the header. Tested by tests/export/ChildOrderTest.cpp against placing one by one.
#include "export/ChildOrder.h"

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

void ChildOrder::place(const ElementText& element, uint32_t index) {
    place(Child{{}, element}, index);
}

void ChildOrder::append(const QDomElement& element) {
    place(Child{element, {}}, UINT32_MAX);
}

void ChildOrder::apply(ElementTexts& texts) {
    if (!adopted_) return;
    // The last one stands where it was placed; before it, each stands at its position among the places that
    // the later ones left free.
    FreePlaces free(children_.size());
    std::vector<const Child*> order(children_.size());
    for (size_t i = children_.size(); i-- > 0;) order[free.take(positions_[i])] = &children_[i];

    std::vector<ElementText> run;
    const auto endRun = [&] {
        if (!run.empty()) parent_.appendChild(texts.placeholder(std::exchange(run, {})));
    };
    for (const Child* const child : order) {
        if (child->node.isNull()) {
            run.push_back(child->text);
        } else {
            endRun();
            parent_.appendChild(child->node);  // moves those that it has already
        }
    }
    endRun();
    children_ = {};
    positions_ = {};
}

void ChildOrder::place(Child child, uint32_t index) {
    adoptChildren();
    const auto count = static_cast<uint32_t>(children_.size());
    positions_.push_back(index < count ? index : count);
    children_.push_back(std::move(child));
}

void ChildOrder::adoptChildren() {
    if (adopted_) return;
    adopted_ = true;
    for (QDomNode node = parent_.firstChild(); !node.isNull(); node = node.nextSibling()) {
        positions_.push_back(static_cast<uint32_t>(children_.size()));
        children_.push_back({node, {}});
    }
}

}  // namespace tzsvg
