#include "export/ViewBox.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "svg/text/NumberReader.h"

namespace tzsvg {
namespace {

bool isFinite(const ViewBox& box) {
    return std::isfinite(box.x) && std::isfinite(box.y) && std::isfinite(box.width) &&
           std::isfinite(box.height);
}

QPointF inPlane(PlaneAxis axis, const TzPoint& point) {
    return planeCoordinates(axis, point.x, point.y, point.z);
}

}  // namespace

bool ViewBox::add(const ViewBox& candidate) {
    const bool empty = width < 0.0F && height < 0.0F;
    const float left = empty ? candidate.x : std::min(candidate.x, x);
    const float top = empty ? candidate.y : std::min(candidate.y, y);
    const ViewBox grown{left, top, std::max(candidate.x + candidate.width, x + width) - left,
                        std::max(candidate.y + candidate.height, y + height) - top};
    if (!isFinite(grown)) return false;
    *this = grown;
    return true;
}

std::string ViewBox::text() const {
    std::string text;
    for (const float value : {x, y, width, height}) {
        std::array<char, 32> digits{};
        const auto end =
            std::to_chars(digits.begin(), digits.end(), value, std::chars_format::general, 6).ptr;
        if (!text.empty()) text += ' ';
        text.append(digits.begin(), end);
    }
    return text;
}

std::optional<ViewBox> readViewBox(const std::string& text) {
    ViewBox box;
    const int read = scanText(text.c_str(), "%f %f %f %f", &box.x, &box.y, &box.width, &box.height);
    if (read != 4 || !isFinite(box)) return std::nullopt;
    return box;
}

std::optional<ViewBox> viewBoxOf(const TzBox& bounds, PlaneAxis axis) {
    const QPointF lower = inPlane(axis, bounds.lower);
    const QPointF extent = inPlane(axis, bounds.extent);
    // The margin is on the lower side only, and neither factor is a round number. Meant so: otherwise
    // existing scenes would be saved with other view boxes. ViewBox/margin pins it.
    constexpr double kMargin = 0.1F;
    constexpr double kGrowth = 1.1000000014901161;
    const ViewBox box{static_cast<float>(lower.x() - kMargin * extent.x()),
                      static_cast<float>(lower.y() - kMargin * extent.y()),
                      static_cast<float>(kGrowth * extent.x()), static_cast<float>(kGrowth * extent.y())};
    if (!isFinite(box)) return std::nullopt;
    return box;
}

}  // namespace tzsvg
