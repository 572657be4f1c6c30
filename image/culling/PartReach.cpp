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

void PartReach::add(uint32_t part, const Box& reach) {
    if (reach.left > reach.right) return;  // paints nothing
    parts_.push_back(part);
    boxes_.push_back(roundedOutwards(fromOrigin(reach)));
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
    const SmallBox box = roundedOutwards(fromOrigin(area));
    Numbers found;
    std::copy_if(among.begin(), among.end(), std::back_inserter(found),
                 [&](uint32_t number) { return boxes_[number].touches(box); });
    return found;
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

}  // namespace tzsvg
