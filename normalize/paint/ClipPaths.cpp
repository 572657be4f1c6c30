#include "normalize/paint/ClipPaths.h"

#include "normalize/convert/Content.h"
#include "normalize/geometry/PathText.h"
#include "normalize/paint/DefinitionText.h"
#include "normalize/style/Reference.h"
#include "normalize/text/Transform.h"

namespace tznormalize {
namespace {

// Known clip paths are kept by url; this one stands for those that let nothing through.
constexpr const char* kNothing = "nothing";

Effect effectOf(const std::string& known) {
    if (known == kNothing) return {EffectKind::kDrawsNothing, {}};
    return {EffectKind::kUrl, known};
}

Matrix ownTransform(const Conversion& conversion, const SourceElement& clipPath) {
    return readTransform(conversion.styles.declared(clipPath, Property::kTransform)).value_or(Matrix());
}

// The value to remember: a reference to the clip path written, or kNothing.
std::string writeClip(Conversion& conversion, const SourceElement& clipPath, const Place& place,
                      const Matrix& base, const PlacedPaths& object) {
    Place own = place;
    own.ctm = base;
    own.style = conversion.styles.computedFromRoot(clipPath);
    std::string id = conversion.definitions.freshName("clip", &clipPath);
    Content content = convertContent(conversion, clipPath, base * ownTransform(conversion, clipPath),
                                     own.style, place.viewport, ContentKind::kClip);
    if (content.isEmpty()) return kNothing;
    // A clip path may be clipped itself.
    const Visit visit(conversion.visited, clipPath);
    const Effect further = resolveClip(conversion, own, object);
    if (further.kind == EffectKind::kDrawsNothing) return kNothing;

    OutputElement out("clipPath");
    std::string url = urlTo(id);
    out.set("id", std::move(id));
    if (content.lift != 0.0) out.set("transform", lowering(content.lift));
    if (further.kind == EffectKind::kUrl) out.set("clip-path", further.url);
    out.takeChildren(content.holder);
    conversion.definitions.defineClip(std::move(out));
    return url;
}

}  // namespace

Effect resolveClip(Conversion& conversion, const Place& place, const PlacedPaths& object) {
    const QStringView value = place.style[Property::kClipPath];
    if (value == u"none" || value.isEmpty()) return {};
    const Reference reference = readReference(value);
    if (!reference.isUrl) return {EffectKind::kNone, {}, "a clip path that is no reference was left out"};
    const SourceElement* const clipPath = conversion.source.byId(reference.id);
    if (!clipPath || clipPath->tag() != Tag::kClipPath || !conversion.visited.mayEnter(*clipPath)) return {};

    Matrix base = place.ctm;
    if (clipPath->attribute(Name::kClipPathUnits) == u"objectBoundingBox") {
        const std::optional<Box> box = object.boxIn(place.ctm);
        if (!box || !box->hasArea()) return {EffectKind::kDrawsNothing, {}};
        base = base * box->fromUnit();
    }
    const DefinitionKey key = DefinitionKey("clip", *clipPath).add(base);
    if (const std::string* const known = conversion.definitions.known(key.text())) return effectOf(*known);
    const std::string made = writeClip(conversion, *clipPath, place, base, object);
    conversion.definitions.remember(key.text(), made);
    return effectOf(made);
}

std::string clipToPath(Conversion& conversion, const Path& path) {
    const std::optional<Box> box = path.controlsBox();
    const double lift = box ? liftFor(conversion, box->bottom) : 0.0;
    std::string data = pathText(path.mapped(Matrix::translation(0.0, -lift)), conversion.grid);
    const std::string key = "outline " + shortNumber(lift) + ' ' + data;
    if (const std::string* const known = conversion.definitions.known(key)) return *known;

    OutputElement out("clipPath");
    std::string id = conversion.definitions.freshName("clip");
    std::string url = urlTo(id);
    out.set("id", std::move(id));
    if (lift != 0.0) out.set("transform", lowering(lift));
    if (!data.empty()) out.append(OutputElement("path")).set("d", std::move(data));
    conversion.definitions.defineClip(std::move(out));
    conversion.definitions.remember(key, url);
    return url;
}

}  // namespace tznormalize
