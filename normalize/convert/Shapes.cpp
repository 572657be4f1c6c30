#include "normalize/convert/Shapes.h"

#include <algorithm>
#include <cmath>

#include "normalize/convert/Groups.h"
#include "normalize/convert/Sight.h"
#include "normalize/geometry/BoxCut.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/geometry/SubPaths.h"
#include "normalize/paint/ClipPaths.h"
#include "normalize/paint/Filters.h"
#include "normalize/paint/Markers.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

// What shows an outline: one element, or two where fill and stroke have to be apart.
struct Parts {
    std::vector<WrittenShape> shapes;
    bool isOutOfSight = false;
    bool isCut = false;  // at the edges of the page
    bool isTooFar = false;
};

// Writes the parts of one outline.
class PartWriter {
  public:
    PartWriter(const Conversion& conversion, const Path& path, const Place& place, const Look& look)
        : conversion_(conversion), path_(path), place_(place), look_(look), mapped_(path.mapped(place.ctm)) {}

    Box box() const { return mapped_.controlsBox().value_or(Box()); }

    // What is drawn is cut down to `limits`; nothing is when there are none.
    Parts write(Tag origin, const std::optional<Box>& limits) {
        limits_ = limits;
        const bool isStroked = !look_.stroke.isNone();
        const bool isApart = look_.isStrokeOutlined || look_.isStrokeFirst ||
                             (limits_ && isStroked && !isClosedThroughout(mapped_));
        if (!isApart) {
            addShape(origin, look_.fill, isStroked);
            return std::move(parts_);
        }
        if (look_.isStrokeFirst) addStroke(origin);
        if (!look_.fill.isNone()) addShape(origin, look_.fill, false);
        if (!look_.isStrokeFirst) addStroke(origin);
        return std::move(parts_);
    }

  private:
    void add(std::optional<WrittenShape> shape) {
        if (shape) parts_.shapes.push_back(std::move(*shape));
    }

    void addShape(Tag origin, const Paint& fill, bool isStroked) {
        const bool isOneLine = mapped_.size() == 2 && mapped_.verbs().back() == Verb::kLine;
        if (limits_ && isStroked && isOneLine && !look_.form.dashes.empty()) return addDashedLine(origin);
        add(writeShape(conversion_, cut(mapped_, isStroked), origin, look_, fill, isStroked));
    }

    // What is left of it begins further on in the dashes.
    void addDashedLine(Tag origin) {
        const Path left = cutLineToBox(mapped_, *limits_);
        if (left.isEmpty()) return;
        parts_.isCut = true;
        Look look = look_;
        const double cutOff = distance(mapped_.points().front(), left.points().front()) / look.scale;
        look.form.dashOffset = std::fmod(look.form.dashOffset + cutOff, dashPeriod(look.form.dashes));
        add(writeShape(conversion_, left, origin, look, Paint(), true));
    }

    void addStroke(Tag origin) {
        if (!look_.isStrokeOutlined) return addShape(origin, Paint(), true);
        // In the shape's own space, where the stroke is even; dots have to be as long as the grid asks there.
        const double scale = look_.scale > 0.0 ? look_.scale : 1.0;
        const Path dotted = withDots(path_, dotLength(look_.form), conversion_.grid.step() / scale);
        const Path area = strokeOutline(dotted, look_.form).mapped(place_.ctm);
        std::optional<WrittenShape> shape = writeArea(conversion_.grid, withoutLoneMoves(cut(area, false)));
        if (!shape) return;
        shape->element.set("fill", look_.stroke.value);
        if (look_.strokeOpacity < 1.0) shape->element.set("fill-opacity", shortNumber(look_.strokeOpacity));
        setNoStroke(conversion_, shape->element);
        add(std::move(shape));
    }

    // What is left of the path within the limits. A stroke along the cut of a closed outline runs out of
    // sight; an open one ends there. Dashes would begin anew.
    Path cut(const Path& path, bool isStroked) {
        if (!limits_ || (isStroked && !look_.form.dashes.empty())) return path;
        parts_.isCut = true;
        return isStroked && !isClosedThroughout(path) ? cutLineToBox(path, *limits_)
                                                      : cutToBox(path, *limits_);
    }

    const Conversion& conversion_;
    const Path& path_;
    const Place& place_;
    const Look& look_;
    const Path mapped_;
    std::optional<Box> limits_;
    Parts parts_;
};

Parts writeParts(Conversion& conversion, const Path& path, const Place& place, Tag origin, const Look& look,
                 bool mayMove, const Target& target) {
    PartWriter writer(conversion, path, place, look);
    const Box box = writer.box();
    Parts parts;
    parts.isOutOfSight = isOutOfSight(conversion, box, look.reach, mayMove, target);
    if (parts.isOutOfSight || !look.isVisible()) return parts;
    parts = writer.write(origin, limitsFor(conversion, box, look.reach, mayMove, target));
    const auto far = std::remove_if(parts.shapes.begin(), parts.shapes.end(),
                                    [](const WrittenShape& shape) { return isTooFar(shape.box); });
    parts.isTooFar = far != parts.shapes.end();
    parts.shapes.erase(far, parts.shapes.end());
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
    conversion.budget.spendText(shape->element.textSize());
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
    if (const std::optional<Box> box = path.controlsBox(place.ctm)) join(target.box, box->grownBy(reach));
}

void noteParts(Conversion& conversion, const SourceElement& shape, const Look& look, const Parts& parts) {
    if (parts.isOutOfSight) {
        addNote(conversion, NoteCode::kLeftOut, shape, QStringLiteral("lies outside of the page"));
        return;
    }
    if (parts.isTooFar) addNote(conversion, NoteCode::kLeftOut, shape, QStringLiteral("reaches too far"));
    if (parts.isCut) {
        addNote(conversion, NoteCode::kLeftOut, shape,
                QStringLiteral("what reaches far over the page was cut off"));
    }
    if (look.isDashless) {
        addNote(conversion, NoteCode::kApproximated, shape,
                QStringLiteral("a stroke of too many dashes became solid"), "stroke-dasharray");
    }
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
    if (conversion.keepsNames()) keepId(conversion, shape, part.element, target);
    appendDrawn(conversion, std::move(part), out, target);
}

}  // namespace

void appendDrawn(Conversion& conversion, WrittenShape shape, OutputElement& out, const Target& target) {
    conversion.budget.spendText(shape.element.textSize());
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
    conversion.budget.spendText(path.points().size());
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
    if (!isMarked && isWithinLift(conversion, path, place, target)) return;
    const Look look = resolveLook(conversion, path, place, object);
    if (!look.isVisible() && !isMarked) return;
    const bool isFiltered = hasFilter(conversion, style);
    if (isFiltered && target.isDrawn && target.filters == 0 && isFilteredOffPage(conversion, place, object)) {
        Parts nothing;
        nothing.isOutOfSight = true;
        return noteParts(conversion, shape, look, nothing);
    }
    Parts parts = writeParts(conversion, path, place, shape.tag(), look, isMarked || isFiltered, target);
    noteParts(conversion, shape, look, parts);
    if (parts.shapes.size() == 1 && !isMarked && !hasGroupEffect(conversion, style)) {
        return finishAlone(conversion, shape, place, object, std::move(parts.shapes.front()), out, target);
    }
    if (parts.shapes.empty() && !isMarked) return;
    Group group(conversion, shape, place, target, object);
    for (WrittenShape& part : parts.shapes) appendDrawn(conversion, std::move(part), group.output(), target);
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
    if (isWithinLift(conversion, path, place, target)) return;
    const Look look = resolveLook(conversion, path, place, object);
    if (!look.isVisible()) return;
    Parts parts = writeParts(conversion, path, place, Tag::kPath, look, false, target);
    for (WrittenShape& part : parts.shapes) {
        appendDrawn(conversion, std::move(part), out, target);
    }
}

}  // namespace tznormalize
