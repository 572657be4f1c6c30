#include "normalize/paint/Patterns.h"

#include <cmath>

#include "normalize/convert/Content.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/paint/ReferenceChain.h"
#include "normalize/text/NumberCursor.h"
#include "normalize/text/Transform.h"
#include "normalize/text/ViewBox.h"

namespace tznormalize {
namespace {

constexpr int kDigits = 9;

// The tile in the space of the pattern, before patternTransform.
struct Tile {
    double x, y, width, height;
};

std::optional<Tile> readTile(const ReferenceChain& chain, const Place& place, const std::optional<Box>& box) {
    const auto value = [&](Name name, Axis axis, double start, double whole) {
        const QStringView text = chain.attribute(name);
        if (box) return start + readShare(text).value_or(0.0) * whole;
        return readLength(text, axis, place.viewport, place.style.fontSize()).value_or(0.0);
    };
    const Box unit = box.value_or(Box());
    const Tile tile = {value(Name::kX, Axis::kHorizontal, unit.left, unit.width()),
                       value(Name::kY, Axis::kVertical, unit.top, unit.height()),
                       value(Name::kWidth, Axis::kHorizontal, 0.0, unit.width()),
                       value(Name::kHeight, Axis::kVertical, 0.0, unit.height())};
    if (!(tile.width > 0.0 && tile.height > 0.0)) return std::nullopt;
    return tile;
}

// By how much the tile is drawn larger than it is defined, for content as fine as the page. What is nearly 1
// is 1: a pattern that was normalized before stays as it is.
double growthOf(const Matrix& base) {
    const double growth = base.stretches().most;
    return std::abs(growth - 1.0) < 1e-6 ? 1.0 : growth;
}

}  // namespace

std::optional<Paint> patternPaint(Conversion& conversion, const SourceElement& pattern, const Place& place,
                                  const PlacedPaths& shape) {
    const ReferenceChain chain(conversion.source, pattern, {Tag::kPattern});
    const SourceElement* const holder = chain.firstWithChild(Tag::kOther);
    if (!holder || !conversion.visited.mayEnter(*holder) || !conversion.visited.mayEnter(pattern))
        return std::nullopt;

    const bool isTileOfBox = chain.attribute(Name::kPatternUnits) != u"userSpaceOnUse";
    const bool isContentOfBox = chain.attribute(Name::kPatternContentUnits) == u"objectBoundingBox";
    std::optional<Box> box;
    if (isTileOfBox || isContentOfBox) {
        box = shape.boxIn(place.ctm);
        if (!box || !box->hasArea()) return std::nullopt;
    }
    const std::optional<Tile> tile = readTile(chain, place, isTileOfBox ? box : std::nullopt);
    if (!tile) return std::nullopt;
    const Matrix base =
        place.ctm * readTransform(chain.attribute(Name::kPatternTransform)).value_or(Matrix());
    if (base.isFlat()) return std::nullopt;

    DefinitionKey key("pattern", pattern);
    key.add(base).add(tile->x).add(tile->y).add(tile->width).add(tile->height);
    if (isContentOfBox) key.add(box->fromUnit());
    if (const std::string* const known = conversion.definitions.known(key.text())) return Paint{*known, 1.0};

    // The content begins where the tile does, whatever its units.
    const double growth = growthOf(base);
    Matrix inner = Matrix::scaling(growth, growth);
    Viewport space = place.viewport;
    if (const std::optional<ViewBox> view = readViewBox(chain.attribute(Name::kViewBox))) {
        inner =
            inner * fitViewBox(*view, chain.attribute(Name::kPreserveAspectRatio), tile->width, tile->height);
        space = {view->width, view->height};
    } else if (isContentOfBox) {
        inner = inner * Matrix::scaling(box->width(), box->height());
    }
    const Style style = conversion.styles.computedFromRoot(*holder);
    std::string id = conversion.definitions.freshName("paint", &pattern);
    const Visit visit(conversion.visited, pattern);
    Content content = convertContent(conversion, *holder, inner, style, space, ContentKind::kDrawing);
    if (content.isEmpty()) return Paint();

    OutputElement out("pattern");
    const std::string width = shortNumber(tile->width * growth, kDigits);
    const std::string height = shortNumber(tile->height * growth, kDigits);
    const Matrix placed =
        base * Matrix::translation(tile->x, tile->y) * Matrix::scaling(1.0 / growth, 1.0 / growth);
    const std::string url = urlTo(id);
    out.set("id", std::move(id));
    out.set("patternUnits", "userSpaceOnUse");
    out.set("x", "0");
    out.set("y", "0");
    out.set("width", width);
    out.set("height", height);
    if (!placed.isIdentity()) out.set("patternTransform", matrixText(placed));
    // The view box says where what was moved up is.
    if (content.lift != 0.0)
        out.set("viewBox", "0 " + shortNumber(-content.lift, kDigits) + ' ' + width + ' ' + height);
    if (style[Property::kOverflow] == u"visible") out.set("overflow", "visible");
    out.takeChildren(content.holder);
    conversion.definitions.define(std::move(out));
    conversion.definitions.remember(key.text(), url);
    return Paint{url, 1.0};
}

}  // namespace tznormalize
