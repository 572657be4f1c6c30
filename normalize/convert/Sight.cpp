#include "normalize/convert/Sight.h"

#include <algorithm>
#include <cmath>

#include "normalize/convert/Content.h"
#include "normalize/convert/Walk.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/style/Reference.h"

namespace tznormalize {
namespace {

// What may reach over the page by this share of its height without being cut off there.
constexpr double kSlack = 0.002;

// What reaches over the page by more than the first share of its longer side, or of that side alone, is cut
// down to a third of it: the view box of the result is less than twice as large as the page.
constexpr double kFar = 0.15;
constexpr double kFarOfSide = 0.2;
constexpr double kNear = 1.0 / 3.0;

struct Margins {
    double beside, above;
};

Margins marginsOf(const Box& page) {
    const double most = kFar * std::max(page.width(), page.height());
    return {std::min(most, kFarOfSide * page.width()), std::min(most, kFarOfSide * page.height())};
}

Box grownBy(const Box& box, double beside, double above) {
    return {box.left - beside, box.top - above, box.right + beside, box.bottom + above};
}

Box rounded(const Box& box, const Grid& grid) {
    return {grid.round(box.left), grid.round(box.top), grid.round(box.right), grid.round(box.bottom)};
}

bool contains(const Box& box, const Box& inner) {
    return inner.left >= box.left && inner.top >= box.top && inner.right <= box.right &&
           inner.bottom <= box.bottom;
}

}  // namespace

bool isOutOfSight(Conversion& conversion, const Box& box, double reach, bool mayMove, const Target& target) {
    if (!target.isDrawn) return false;
    // Rounded as it will be written: a second normalization has to judge alike.
    std::optional<Box> seen = rounded(box, conversion.grid).grownBy(reach);
    const bool stays = !mayMove && target.filters == 0;
    for (const Box& clip : target.clips) {
        seen = intersection(*seen, clip);
        if (!seen) return stays;
    }
    const Box& page = conversion.page;
    if (stays && !seen->intersects(page)) return true;
    if (!contains(page.grownBy(kSlack * page.height()), *seen)) conversion.reachesOverPage = true;
    return false;
}

std::optional<Box> limitsFor(const Conversion& conversion, const Box& box, double reach, bool mayMove,
                             const Target& target) {
    if (!target.isDrawn || mayMove || target.filters > 0) return std::nullopt;
    const Box& page = conversion.page;
    const Margins far = marginsOf(page);
    if (contains(grownBy(page, far.beside + reach, far.above + reach), box)) return std::nullopt;
    // Whole numbers, which rounding to the grid leaves alone.
    const Box near = grownBy(page, kNear * far.beside + reach, kNear * far.above + reach);
    return Box{std::floor(near.left), std::floor(near.top), std::ceil(near.right), std::ceil(near.bottom)};
}

bool isWithinLift(const Conversion& conversion, const Path& path, const Place& place, const Target& target) {
    if (!target.isDrawn || !conversion.isToBeLifted()) return false;
    const QStringView stroke = place.style[Property::kStroke];
    const bool staysStroke = stroke == u"none" || (place.ctm.isEven() && !stroke.startsWith(u"url") &&
                                                   !stroke.startsWith(u"context"));
    const double rounding = 4.0 * conversion.grid.step();
    return staysStroke && path.controlsBox(place.ctm)->top - rounding >= conversion.drawn->top;
}

bool isTooFar(const Box& box) {
    constexpr Box kReach{-400'000.0, -400'000.0, 400'000.0, 400'000.0};
    return !contains(kReach, box);  // what is no number is in no box
}

std::optional<Box> boxOfClip(Conversion& conversion, const Place& place) {
    const Reference reference = readReference(place.style[Property::kClipPath]);
    if (reference.id.isNull()) return std::nullopt;
    const SourceElement* clip = conversion.source.byId(reference.id);
    if (!clip || clip->tag() != Tag::kClipPath || !conversion.visited.mayEnter(*clip)) return std::nullopt;
    if (clip->attribute(Name::kClipPathUnits) == u"objectBoundingBox") return std::nullopt;
    const std::string key = DefinitionKey("clip", *clip).add(place.ctm).text();
    const auto known = conversion.clipBoxes.find(key);
    if (known != conversion.clipBoxes.end()) return known->second;
    const Style style = conversion.styles.computedFromRoot(*clip);
    std::optional<Box> box = measureContent(conversion, *clip, place.ctm * ownTransform(style), style,
                                            place.viewport, ContentKind::kClip);
    if (box) box = rounded(*box, conversion.grid);
    conversion.clipBoxes.emplace(key, box);
    return box;
}

}  // namespace tznormalize
