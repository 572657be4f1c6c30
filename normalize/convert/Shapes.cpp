#include "normalize/convert/Shapes.h"

#include "normalize/convert/Groups.h"
#include "normalize/convert/Sight.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/geometry/SubPaths.h"
#include "normalize/paint/ClipPaths.h"
#include "normalize/paint/Markers.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

std::optional<WrittenShape> strokeAsArea(const Conversion& conversion, const Path& path, const Place& place,
                                         const Look& look) {
    // In the shape's own space, where the stroke is even; dots have to be as long as the grid asks there.
    const double scale = look.scale > 0.0 ? look.scale : 1.0;
    const Path area =
        strokeOutline(withDots(path, dotLength(look.form), conversion.grid.step() / scale), look.form)
            .mapped(place.ctm);
    std::optional<WrittenShape> shape = writeArea(conversion.grid, withoutLoneMoves(area));
    if (!shape) return std::nullopt;
    shape->element.set("fill", look.stroke.value);
    if (look.strokeOpacity < 1.0) shape->element.set("fill-opacity", shortNumber(look.strokeOpacity));
    setInvisibleStroke(shape->element);
    return shape;
}

// One element, or two where fill and stroke have to be apart.
std::vector<WrittenShape> writeParts(const Conversion& conversion, const Path& path, const Place& place,
                                     Tag origin, const Look& look) {
    std::vector<WrittenShape> parts;
    const auto add = [&](std::optional<WrittenShape> shape) {
        if (shape) parts.push_back(std::move(*shape));
    };
    const Path mapped = path.mapped(place.ctm);
    const Grid& grid = conversion.grid;
    if (!look.isStrokeOutlined && !look.isStrokeFirst) {
        add(writeShape(grid, mapped, origin, look, look.fill, !look.stroke.isNone()));
        return parts;
    }
    const auto addStroke = [&] {
        add(look.isStrokeOutlined ? strokeAsArea(conversion, path, place, look)
                                  : writeShape(grid, mapped, origin, look, Paint(), true));
    };
    if (look.isStrokeFirst) addStroke();
    if (!look.fill.isNone()) add(writeShape(grid, mapped, origin, look, look.fill, false));
    if (!look.isStrokeFirst) addStroke();
    return parts;
}

void writeInClip(Conversion& conversion, const Path& path, const Place& place, const PlacedPaths& object,
                 OutputElement& out) {
    std::optional<WrittenShape> shape = writeArea(conversion.grid, withoutLoneMoves(path.mapped(place.ctm)));
    if (!shape) return;
    if (place.style[Property::kClipRule] == u"evenodd") shape->element.set("clip-rule", "evenodd");
    const Effect clip = resolveClip(conversion, place, object);
    if (clip.kind == EffectKind::kDrawsNothing) return;
    if (clip.kind == EffectKind::kUrl) shape->element.set("clip-path", clip.url);
    out.append(std::move(shape->element));
}

// A stroke that is written as an area reaches over the outline with its points.
void measure(const Conversion& conversion, const Path& path, const Place& place, Target& target) {
    target.add(path, place.ctm);
    const bool isStroked = place.style[Property::kStroke] != u"none";
    if (!isStroked || target.isClip || !target.box) return;
    const bool staysStroke = place.ctm.isEven() && !place.style[Property::kStroke].startsWith(u"url");
    if (staysStroke && !target.countsStrokes) return;
    const double reach = strokeWidth(conversion, place) * place.ctm.stretches().most / 2.0;
    if (const std::optional<Box> box = path.mapped(place.ctm).controlsBox())
        join(target.box, box->grownBy(reach));
}

void noteStroke(Conversion& conversion, const SourceElement& shape, const Look& look) {
    if (look.isStrokeOutlined) {
        addNote(conversion, NoteCode::kCarried, shape,
                look.stroke.isReference()
                    ? QStringLiteral("a stroke with a gradient or pattern became an area")
                    : QStringLiteral("a stroke under an uneven scale became an area"),
                "stroke");
    }
}

// With no group around it: its opacity, clip path and id stand on the element itself.
void finishAlone(Conversion& conversion, const SourceElement& shape, const Place& place,
                 const PlacedPaths& object, WrittenShape part, OutputElement& out, const Target& target) {
    const double opacity = readOpacity(place.style[Property::kOpacity]);
    if (opacity <= 0.0) return;
    if (opacity < 1.0) part.element.set("opacity", shortNumber(opacity));
    const Effect clip = resolveClip(conversion, place, object);
    noteEffect(conversion, shape, clip, "clip-path");
    if (clip.kind == EffectKind::kDrawsNothing) return;
    if (clip.kind == EffectKind::kUrl) part.element.set("clip-path", clip.url);
    keepId(conversion, shape, part.element, target);
    appendDrawn(conversion, std::move(part), out, target);
}

}  // namespace

void appendDrawn(Conversion& conversion, WrittenShape shape, OutputElement& out, const Target& target) {
    if (target.isDrawn) join(conversion.drawn, shape.box);
    out.append(std::move(shape.element));
}

void convertShape(Conversion& conversion, const SourceElement& shape, const Place& place, OutputElement& out,
                  Target& target) {
    const Style& style = place.style;
    if (isHidden(style)) return;
    const PlacedPath placed{outlineOf(shape, conversion.styles, place.viewport, style.fontSize()), place.ctm};
    const Path& path = placed.path;
    if (path.isEmpty()) return;
    const PlacedPaths object(placed);
    if (target.isMeasured) {
        if (target.isClip || mayBeSeen(path, place)) measure(conversion, path, place, target);
        if (!target.isClip && hasMarkers(shape, place))
            drawMarkers(conversion, shape, path, place, strokeWidth(conversion, place), out, target);
        return;
    }
    target.add(path, place.ctm);
    if (target.isClip) return writeInClip(conversion, path, place, object, out);

    const bool isMarked = hasMarkers(shape, place);
    const Look look = resolveLook(conversion, path, place, object);
    if (!look.isVisible() && !isMarked) return;
    const bool hasEffect = isMarked || hasGroupEffect(style);
    if (isOutOfSight(conversion, path.mapped(place.ctm), look.reach, hasEffect, target)) {
        addNote(conversion, NoteCode::kLeftOut, shape, QStringLiteral("lies outside of the page"));
        return;
    }
    std::vector<WrittenShape> parts = writeParts(conversion, path, place, shape.tag(), look);
    noteStroke(conversion, shape, look);
    if (parts.size() == 1 && !hasEffect) {
        return finishAlone(conversion, shape, place, object, std::move(parts.front()), out, target);
    }
    if (parts.empty() && !isMarked) return;
    Group group(conversion, shape, place, target, object);
    for (WrittenShape& part : parts) appendDrawn(conversion, std::move(part), group.output(), target);
    if (isMarked)
        drawMarkers(conversion, shape, path, place, strokeWidth(conversion, place), group.output(), target);
    group.finish(out);
}

void drawOutline(Conversion& conversion, const Path& path, const Place& place, const PlacedPaths& object,
                 OutputElement& out, Target& target) {
    if (path.isEmpty()) return;
    if (target.isMeasured) {
        if (target.isClip || mayBeSeen(path, place)) measure(conversion, path, place, target);
        return;
    }
    target.add(path, place.ctm);
    if (target.isClip) return writeInClip(conversion, path, place, object, out);
    const Look look = resolveLook(conversion, path, place, object);
    if (!look.isVisible()) return;
    if (isOutOfSight(conversion, path.mapped(place.ctm), look.reach, false, target)) return;
    for (WrittenShape& part : writeParts(conversion, path, place, Tag::kPath, look)) {
        appendDrawn(conversion, std::move(part), out, target);
    }
}

}  // namespace tznormalize
