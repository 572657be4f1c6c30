#include "image/culling/PartReach.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

namespace tzsvg {
namespace {

constexpr double kBlurredPixels = 3.0;

constexpr float kFarthest = std::numeric_limits<float>::infinity();

float roundedDown(double value) {
    return std::nextafter(static_cast<float>(value), -kFarthest);
}
float roundedUp(double value) {
    return std::nextafter(static_cast<float>(value), kFarthest);
}
SmallBox roundedOutwards(const Box& box) {
    return {roundedDown(box.left), roundedDown(box.top), roundedUp(box.right), roundedUp(box.bottom)};
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

Box paintedAround(const QRectF& shown, const QSizeF& pixels) {
    const double pixel = std::max(shown.width() / pixels.width(), shown.height() / pixels.height());
    return Box::of(shown).grown(kBlurredPixels * pixel);
}

bool lineTouches(const QPointF& from, const QPointF& to, const Box& area) {
    double begin = 0.0;
    double end = 1.0;
    return cutBetween(from.x(), to.x() - from.x(), area.left, area.right, begin, end) &&
           cutBetween(from.y(), to.y() - from.y(), area.top, area.bottom, begin, end);
}

int roundOf(const QPointF& from, const QPointF& to, const QPointF& point) {
    const bool startsAbove = from.y() <= point.y();
    if (startsAbove == (to.y() <= point.y())) return 0;
    const double x = from.x() + (point.y() - from.y()) / (to.y() - from.y()) * (to.x() - from.x());
    if (x <= point.x()) return 0;
    return startsAbove ? 1 : -1;
}

void PartReach::add(uint32_t part, const Reach& reach) {
    if (reach.box.left > reach.box.right) return;  // paints nothing
    const auto number = static_cast<uint32_t>(boxes_.size());
    parts_.push_back(part);
    boxes_.push_back(roundedOutwards(fromOrigin(reach.box)));
    if (reach.strips.empty()) return;
    const auto first = static_cast<uint32_t>(strips_.size());
    for (const Strip& strip : reach.strips) {
        const QPointF from = strip.from - origin_;
        const QPointF to = strip.to - origin_;
        const double farthest =
            std::max({std::abs(from.x()), std::abs(from.y()), std::abs(to.x()), std::abs(to.y())});
        strips_.push_back({static_cast<float>(from.x()), static_cast<float>(from.y()),
                           static_cast<float>(to.x()), static_cast<float>(to.y()),
                           roundedUp(strip.radius + farthest * std::numeric_limits<float>::epsilon())});
    }
    stripsOf_.push_back({number, first, static_cast<uint32_t>(strips_.size()), reach.isFilled});
}

void PartReach::finish(double side) {
    grid_ = BoxGrid(boxes_, static_cast<float>(side));
}

PartReach::Numbers PartReach::reaching(const Box& area) const {
    if (const auto near = grid_.near(roundedOutwards(fromOrigin(area)))) return reaching(area, *near);
    Numbers all(boxes_.size());
    std::iota(all.begin(), all.end(), 0);
    return reaching(area, all);
}

PartReach::Numbers PartReach::reaching(const Box& area, const Numbers& among) const {
    const Box at = fromOrigin(area);
    const SmallBox box = roundedOutwards(at);
    Numbers found;
    std::copy_if(among.begin(), among.end(), std::back_inserter(found),
                 [&](uint32_t number) { return boxes_[number].touches(box) && stripsTouch(number, at); });
    return found;
}

size_t PartReach::boxesTouching(const Box& area, const Numbers& among) const {
    const SmallBox box = roundedOutwards(fromOrigin(area));
    return static_cast<size_t>(std::count_if(among.begin(), among.end(),
                                             [&](uint32_t number) { return boxes_[number].touches(box); }));
}

std::vector<uint32_t> PartReach::partsOf(const Numbers& numbers) const {
    std::vector<uint32_t> parts(numbers.size());
    std::transform(numbers.begin(), numbers.end(), parts.begin(),
                   [&](uint32_t number) { return parts_[number]; });
    return parts;
}

Box PartReach::fromOrigin(const Box& area) const {
    return {area.left - origin_.x(), area.top - origin_.y(), area.right - origin_.x(),
            area.bottom - origin_.y()};
}

// True also for a shape that has no strips.
bool PartReach::stripsTouch(uint32_t number, const Box& area) const {
    const auto at = std::lower_bound(stripsOf_.begin(), stripsOf_.end(), number,
                                     [](const Strips& of, uint32_t index) { return of.number < index; });
    if (at == stripsOf_.end() || at->number != number) return true;
    // An area that no outline touches lies within all of a shape or outside: how often the outlines go round
    // a point of it tells.
    const QPointF center(area.left / 2 + area.right / 2, area.top / 2 + area.bottom / 2);
    int rounds = 0;
    for (uint32_t i = at->first; i < at->past; ++i) {
        const SmallStrip& strip = strips_[i];
        const QPointF from(double{strip.fromX}, double{strip.fromY});
        const QPointF to(double{strip.toX}, double{strip.toY});
        // Somewhat more than the radius around the line: the corners of the area are not rounded off.
        if (lineTouches(from, to, area.grown(double{strip.radius}))) return true;
        rounds += roundOf(from, to, center);
    }
    return at->isFilled && rounds != 0;
}

}  // namespace tzsvg
