#include "normalize/check/PageLosses.h"

#include <cmath>

#include "normalize/text/ViewBox.h"

namespace tznormalize {
namespace {

constexpr FindingRule kPage{"page", "an invisible outline around the page keeps its size and place"};
constexpr double kTolerance = 0.005;  // of the page's size

}  // namespace

void checkPage(const LossContext& context) {
    const SourceElement& root = context.document.source()->root();
    const auto box = readViewBox(root.attribute(Name::kViewBox));
    const ViewBox page = box ? *box : ViewBox{0, 0, context.viewport.width, context.viewport.height};
    const ImportedGeometry& drawn = context.geometry;
    const double slack = kTolerance * std::max(page.width, page.height);
    const auto isNear = [slack](double one, double other) { return std::abs(one - other) <= slack; };
    const double top = drawn.flipHeight - drawn.top;
    const double bottom = drawn.flipHeight - drawn.bottom;
    // What reaches over the page widens it for a normalization as well.
    const bool isCovered = drawn.left <= page.x + slack && top <= page.y + slack &&
                           drawn.right >= page.x + page.width - slack &&
                           bottom >= page.y + page.height - slack;
    const bool isUnmoved = isNear(std::trunc(drawn.top - drawn.bottom), drawn.flipHeight);
    if (isCovered && isUnmoved) return;
    context.add(FindingKind::kChanged, kPage, root, u"viewBox",
                QStringLiteral("the page comes back as the box around what is drawn, %1 %2 %3 %4")
                    .arg(drawn.left)
                    .arg(top)
                    .arg(drawn.right - drawn.left)
                    .arg(bottom - top));
}

}  // namespace tznormalize
