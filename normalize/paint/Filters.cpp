#include "normalize/paint/Filters.h"

#include "normalize/convert/Conversion.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/paint/EffectRegion.h"
#include "normalize/paint/FilterPrimitives.h"
#include "normalize/style/Reference.h"

namespace tznormalize {
namespace {

constexpr int kMostLinks = 32;  // from a filter to the one that has its primitives

const SourceElement* withPrimitives(const SourceDocument& document, const SourceElement* filter) {
    for (int i = 0; filter && i < kMostLinks; ++i, filter = document.target(*filter)) {
        if (filter->firstChild()) return filter;
    }
    return nullptr;
}

// Blurs and offsets along the object's axes can only be said along the page's.
bool isBent(const Matrix& ctm) {
    return !ctm.isEven() && ctm.isTurned() && (ctm.a != 0.0 || ctm.d != 0.0);
}

}  // namespace

bool isFilteredOffPage(const Conversion& conversion, const Place& place, const PlacedPaths& object) {
    const Reference reference = readReference(place.style[Property::kFilter]);
    const SourceElement* const filter = reference.isUrl ? conversion.source.byId(reference.id) : nullptr;
    if (!filter || filter->tag() != Tag::kFilter) return false;
    const std::optional<Box> region =
        wholeRegion(*filter, Name::kFilterUnits, place, object.boxIn(place.ctm));
    return region && !region->intersects(conversion.page);
}

Effect resolveFilter(Conversion& conversion, const Place& place, const PlacedPaths& object) {
    const QStringView value = place.style[Property::kFilter];
    if (value == u"none" || value.isEmpty()) return {};
    const Reference reference = readReference(value);
    if (!reference.isUrl) return {EffectKind::kNone, {}, "a filter that is no reference was left out"};
    const SourceElement* const filter = conversion.source.byId(reference.id);
    if (!filter || filter->tag() != Tag::kFilter) return {};
    const SourceElement* const holder = withPrimitives(conversion.source, filter);
    if (!holder) return {EffectKind::kDrawsNothing, {}};

    const std::optional<Box> box = object.boxIn(place.ctm);
    const std::optional<Box> region = effectRegion(conversion, *filter, Name::kFilterUnits, place, box);
    if (!region) return {};
    DefinitionKey key("filter", *filter);
    key.add(place.ctm).add(region->fromUnit());
    if (const std::string* const known = conversion.definitions.known(key.text()))
        return {EffectKind::kUrl, *known};

    if (isBent(place.ctm))
        addNote(conversion, NoteCode::kApproximated, *filter,
                QStringLiteral("it no longer turns with the object"));
    FilterUse use = {place, std::nullopt};
    if (filter->attribute(Name::kPrimitiveUnits) == u"objectBoundingBox") use.unit = box;
    OutputElement out("filter");
    std::string id = conversion.definitions.freshName("filter", filter);
    const std::string url = urlTo(id);
    out.set("id", std::move(id));
    setRegion(out, "filterUnits", *region);
    const Style style = conversion.styles.computedFromRoot(*holder);
    for (const SourceElement* child = holder->firstChild(); child; child = child->nextSibling())
        appendPrimitive(conversion, *child, style, use, out);
    conversion.budget.spendText(out.textSize());
    conversion.definitions.define(std::move(out));
    conversion.definitions.remember(key.text(), url);
    return {EffectKind::kUrl, url};
}

}  // namespace tznormalize
