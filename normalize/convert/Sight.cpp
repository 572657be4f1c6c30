#include "normalize/convert/Sight.h"

#include "normalize/convert/Content.h"
#include "normalize/convert/Walk.h"
#include "normalize/style/Reference.h"

namespace tznormalize {
namespace {

// What may reach over the page by this share of its height without being cut off there.
constexpr double kSlack = 0.002;

Box rounded(const Box& box, const Grid& grid) {
    return {grid.round(box.left), grid.round(box.top), grid.round(box.right), grid.round(box.bottom)};
}

bool contains(const Box& box, const Box& inner) {
    return inner.left >= box.left && inner.top >= box.top && inner.right <= box.right &&
           inner.bottom <= box.bottom;
}

}  // namespace

bool isOutOfSight(Conversion& conversion, const Path& path, double reach, bool hasEffect,
                  const Target& target) {
    if (!target.isDrawn) return false;
    const std::optional<Box> controls = path.controlsBox();
    if (!controls) return true;
    // Rounded as it will be written: a second normalization has to judge alike.
    std::optional<Box> box = rounded(*controls, conversion.grid).grownBy(reach);
    for (const Box& clip : target.clips) {
        box = intersection(*box, clip);
        if (!box) return true;
    }
    const Box& page = conversion.page;
    if (!hasEffect && target.effects == 0 && !box->intersects(page)) return true;
    if (!contains(page.grownBy(kSlack * page.height()), *box)) conversion.reachesOverPage = true;
    return false;
}

std::optional<Box> boxOfClip(Conversion& conversion, const Place& place) {
    const Reference reference = readReference(place.style[Property::kClipPath]);
    if (reference.id.isNull()) return std::nullopt;
    const SourceElement* clip = conversion.source.byId(reference.id);
    if (!clip || clip->tag() != Tag::kClipPath || !conversion.visited.mayEnter(*clip)) return std::nullopt;
    if (clip->attribute(Name::kClipPathUnits) == u"objectBoundingBox") return std::nullopt;
    const Style style = conversion.styles.computedFromRoot(*clip);
    const Matrix matrix = place.ctm * ownTransform(style);
    const std::optional<Box> box =
        measureContent(conversion, *clip, matrix, style, place.viewport, ContentKind::kClip);
    if (!box) return std::nullopt;
    return rounded(*box, conversion.grid);
}

}  // namespace tznormalize
