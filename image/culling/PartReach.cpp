#include "image/culling/PartReach.h"

#include <algorithm>
#include <cmath>

namespace tzsvg {
namespace {

constexpr float kFarthest = std::numeric_limits<float>::infinity();

float roundedDown(double value) {
    return std::nextafter(static_cast<float>(value), -kFarthest);
}
float roundedUp(double value) {
    return std::nextafter(static_cast<float>(value), kFarthest);
}

// Cuts the part [from, to] of a line down to where it is between two edges; false when nothing is left.
bool cutBetween(double start, double step, double low, double high, double& from, double& to) {
    if (step == 0.0) return start >= low && start <= high;
    const double a = (low - start) / step;
    const double b = (high - start) / step;
    from = std::max(from, std::min(a, b));
    to = std::min(to, std::max(a, b));
    return from <= to;
}

}  // namespace

Box Box::everywhere() {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    return {-kInfinity, -kInfinity, kInfinity, kInfinity};
}

Box Box::of(const QPointF& center, double radius) {
    return {center.x() - radius, center.y() - radius, center.x() + radius, center.y() + radius};
}

void Box::add(const Box& other) {
    left = std::min(left, other.left);
    top = std::min(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
}

bool Box::isFinite() const {
    return std::isfinite(left) && std::isfinite(top) && std::isfinite(right) && std::isfinite(bottom);
}

bool Strip::touches(const Box& area) const {
    // Somewhat more than the radius around the line: the corners of the area are not rounded off.
    const Box around = area.grown(radius);
    double begin = 0.0;
    double end = 1.0;
    return cutBetween(from.x(), to.x() - from.x(), around.left, around.right, begin, end) &&
           cutBetween(from.y(), to.y() - from.y(), around.top, around.bottom, begin, end);
}

void PartReach::add(uint32_t part, const Reach& reach) {
    if (reach.box.left > reach.box.right) return;  // paints nothing
    const auto shape = static_cast<uint32_t>(boxes_.size());
    parts_.push_back(part);
    boxes_.push_back({roundedDown(reach.box.left - origin_.x()), roundedDown(reach.box.top - origin_.y()),
                      roundedUp(reach.box.right - origin_.x()), roundedUp(reach.box.bottom - origin_.y())});
    if (reach.strips.empty()) return;
    const auto first = static_cast<uint32_t>(strips_.size());
    strips_.insert(strips_.end(), reach.strips.begin(), reach.strips.end());
    stripsOf_.push_back({shape, first, static_cast<uint32_t>(strips_.size())});
}

std::vector<uint32_t> PartReach::reaching(const Box& area) const {
    const SmallBox small = {roundedDown(area.left - origin_.x()), roundedDown(area.top - origin_.y()),
                            roundedUp(area.right - origin_.x()), roundedUp(area.bottom - origin_.y())};
    std::vector<uint32_t> found;
    for (uint32_t i = 0; i < boxes_.size(); ++i) {
        const SmallBox& box = boxes_[i];
        if (box.left <= small.right && small.left <= box.right && box.top <= small.bottom &&
            small.top <= box.bottom && stripsTouch(i, area))
            found.push_back(parts_[i]);
    }
    return found;
}

// True also for a shape that has no strips.
bool PartReach::stripsTouch(uint32_t shape, const Box& area) const {
    const auto at = std::lower_bound(stripsOf_.begin(), stripsOf_.end(), shape,
                                     [](const Strips& of, uint32_t index) { return of.shape < index; });
    if (at == stripsOf_.end() || at->shape != shape) return true;
    return std::any_of(strips_.begin() + at->first, strips_.begin() + at->past,
                       [&](const Strip& strip) { return strip.touches(area); });
}

}  // namespace tzsvg
