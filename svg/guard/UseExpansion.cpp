// The cost of an ID is the number of elements that drawing what it names visits.
#include "svg/guard/UseExpansion.h"

#include <algorithm>

#include "svg/tree/DocumentLimits.h"

namespace tzsvg {
namespace {

constexpr int64_t kUnknown = -1;
constexpr int64_t kInProgress = -2;

}  // namespace

int UseExpansion::targetOf(const QString& id) {
    const auto at = targetsById_.constFind(id);
    if (at != targetsById_.constEnd()) return at.value();
    const int target = static_cast<int>(targets_.size());
    targetsById_.insert(id, target);
    targets_.push_back({{}, kUnknown});
    return target;
}

void UseExpansion::begin() {
    open_.push_back({elements_++, {}});
}

void UseExpansion::end() {
    const Open ended = std::move(open_.back());
    open_.pop_back();
    for (const int target : ended.targets)
        targets_[static_cast<size_t>(target)].claims.push_back({ended.first, elements_});
}

void UseExpansion::claim(const QString& id) {
    open_.back().targets.push_back(targetOf(id));
}

void UseExpansion::use(const QString& id) {
    uses_.push_back({elements_ - 1, targetOf(id)});
}

bool UseExpansion::withinLimits() {
    int64_t total = 0;
    return std::all_of(uses_.begin(), uses_.end(),
                       [&](const Use& use) { return addCost(use.target, 1, total); });
}

// Adds the cost of a target; false when a limit is passed or the target is part of itself.
bool UseExpansion::addCost(int target, int depth, int64_t& total) {
    Target& of = targets_[static_cast<size_t>(target)];
    if (of.cost == kInProgress || depth > kMaxElementDepth) return false;
    if (of.cost == kUnknown) {
        of.cost = kInProgress;
        int64_t cost = 0;
        for (const Range& claim : of.claims) {
            cost += claim.past - claim.first;
            auto use = std::lower_bound(uses_.begin(), uses_.end(), claim.first,
                                        [](const Use& a, int64_t position) { return a.position < position; });
            for (; use != uses_.end() && use->position < claim.past; ++use) {
                if (!addCost(use->target, depth + 1, cost)) return false;
            }
        }
        of.cost = cost;
    }
    total += of.cost;
    return total <= kMaxUsedElements;
}

}  // namespace tzsvg
