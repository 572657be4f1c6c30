#include "normalize/convert/Content.h"

#include <algorithm>
#include <cmath>

#include "normalize/convert/Walk.h"

namespace tznormalize {
namespace {

// In a clip path, nothing else counts.
bool belongsInClip(Tag tag) {
    return isShape(tag) || tag == Tag::kUse || tag == Tag::kText;
}

void convertInto(Conversion& conversion, const SourceElement& definition, const Place& place,
                 OutputElement& out, Target& target) {
    const Visit visit(conversion.visited, definition);
    for (const SourceElement* child = definition.firstChild(); child; child = child->nextSibling()) {
        if (!target.isClip || belongsInClip(child->tag()))
            convertElement(conversion, *child, place, out, target);
    }
}

}  // namespace

double liftFor(const Conversion& conversion, double bottom) {
    // No round number: what ends there must be judged alike when it has been rounded.
    const double lowest = conversion.page.bottom - 0.637;
    if (bottom <= lowest) return 0.0;
    // In steps of the page's height, so that it does not hang on the last digit of what is lowest.
    const double step = std::max(1.0, std::ceil(conversion.page.height()));
    return std::ceil((bottom - lowest) / step) * step;
}

std::optional<Box> measureContent(Conversion& conversion, const SourceElement& definition, const Matrix& base,
                                  const Style& style, const Viewport& viewport, ContentKind kind) {
    Target target;
    target.isClip = kind == ContentKind::kClip;
    target.isMeasured = true;
    OutputElement nothing("g");
    convertInto(conversion, definition, {base, style, viewport}, nothing, target);
    return target.box;
}

Content convertContent(Conversion& conversion, const SourceElement& definition, const Matrix& base,
                       const Style& style, const Viewport& viewport, ContentKind kind) {
    Content content;
    const std::optional<Box> box = measureContent(conversion, definition, base, style, viewport, kind);
    if (box) content.lift = liftFor(conversion, box->bottom);
    Target target;
    target.isClip = kind == ContentKind::kClip;
    const Place place{Matrix::translation(0.0, -content.lift) * base, style, viewport};
    convertInto(conversion, definition, place, content.holder, target);
    return content;
}

}  // namespace tznormalize
