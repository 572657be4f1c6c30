#include "normalize/paint/Masks.h"

#include "normalize/convert/Content.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/paint/EffectRegion.h"
#include "normalize/style/Reference.h"

namespace tznormalize {
namespace {

// The group that normalized input links to from its mask: its name is kept then.
const SourceElement* linkedGroup(const Conversion& conversion, const SourceElement& mask) {
    const SourceElement* const only = mask.firstChild();
    if (!only || only->nextSibling() || only->tag() != Tag::kUse) return nullptr;
    const SourceElement* const target = conversion.source.target(*only);
    return target && target->tag() == Tag::kG ? target : nullptr;
}

// Content that was moved up stands in a group of its own, which moves it down again. [trap: a `g` in a `mask`
// refuses the load]
void setContent(Conversion& conversion, const SourceElement& mask, Content& content, OutputElement& out) {
    if (content.lift == 0.0) {
        out.takeChildren(content.holder);
        return;
    }
    OutputElement group("g");
    std::string id = conversion.definitions.freshName("part", linkedGroup(conversion, mask));
    out.append(OutputElement("use")).set("xlink:href", '#' + id);
    group.set("id", std::move(id));
    group.set("transform", lowering(content.lift));
    group.takeChildren(content.holder);
    conversion.definitions.define(std::move(group));
}

std::string writeMask(Conversion& conversion, const SourceElement& mask, const Place& place,
                      const Matrix& base, const Box& region, const PlacedPaths& object) {
    Place own = place;
    own.style = conversion.styles.computedFromRoot(mask);
    std::string id = conversion.definitions.freshName("mask", &mask);
    Content content =
        convertContent(conversion, mask, base, own.style, place.viewport, ContentKind::kDrawing);
    OutputElement out("mask");
    std::string url = urlTo(id);
    out.set("id", std::move(id));
    setRegion(out, "maskUnits", region);
    if (own.style[Property::kMaskType] == u"alpha") out.set("style", "mask-type:alpha");
    setContent(conversion, mask, content, out);
    // A mask may be masked itself.
    const Visit visit(conversion.visited, mask);
    const Effect further = resolveMask(conversion, own, object);
    if (further.kind == EffectKind::kUrl) out.set("mask", further.url);
    conversion.definitions.define(std::move(out));
    return url;
}

}  // namespace

Effect resolveMask(Conversion& conversion, const Place& place, const PlacedPaths& object) {
    const QStringView value = place.style[Property::kMask];
    if (value == u"none" || value.isEmpty()) return {};
    const Reference reference = readReference(value);
    if (!reference.isUrl) return {EffectKind::kNone, {}, "a mask that is no reference was left out"};
    const SourceElement* const mask = conversion.source.byId(reference.id);
    if (!mask || mask->tag() != Tag::kMask || !conversion.visited.mayEnter(*mask)) return {};

    const std::optional<Box> box = object.boxIn(place.ctm);
    const std::optional<Box> region = effectRegion(conversion, *mask, Name::kMaskUnits, place, box);
    if (!region) return {EffectKind::kDrawsNothing, {}};
    Matrix base = place.ctm;
    if (mask->attribute(Name::kMaskContentUnits) == u"objectBoundingBox") {
        if (!box || !box->hasArea()) return {EffectKind::kDrawsNothing, {}};
        base = base * box->fromUnit();
    }
    DefinitionKey key("mask", *mask);
    key.add(base).add(region->fromUnit());
    if (const std::string* const known = conversion.definitions.known(key.text()))
        return {EffectKind::kUrl, *known};
    const std::string url = writeMask(conversion, *mask, place, base, *region, object);
    conversion.definitions.remember(key.text(), url);
    return {EffectKind::kUrl, url};
}

}  // namespace tznormalize
