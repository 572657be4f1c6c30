#include "normalize/convert/Use.h"

#include "normalize/convert/Groups.h"
#include "normalize/convert/Walk.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/text/ViewBox.h"

namespace tznormalize {
namespace {

double lengthOf(const Conversion& conversion, const SourceElement& element, Name name, Axis axis,
                const Place& place, double otherwise) {
    return readLength(conversion.styles.geometryValue(element, name), axis, place.viewport,
                      place.style.fontSize())
        .value_or(otherwise);
}

// Width or height of a viewport: of the `use`, else of a nested svg itself, else all there is.
double extentOf(const Conversion& conversion, const SourceElement& element, const SourceElement& sized,
                Name name, Axis axis, const Place& place) {
    const double whole = place.viewport.extent(axis);
    const bool isOwn = element.tag() == Tag::kSvg && !sized.has(name);
    return lengthOf(conversion, isOwn ? element : sized, name, axis, place, whole);
}

const SourceElement* targetOf(Conversion& conversion, const SourceElement& use) {
    const SourceElement* target = conversion.source.target(use);
    if (!target) {
        const QStringView link = use.href();
        if (!link.isEmpty()) {
            addNote(conversion, NoteCode::kLeftOut, use,
                    link.startsWith(u'#') ? QStringLiteral("it refers to nothing")
                                          : QStringLiteral("it refers to another file"),
                    "href");
        }
        return nullptr;
    }
    if (!conversion.visited.mayEnter(*target) || !conversion.visited.mayEnter(use)) {
        addNote(conversion, NoteCode::kLeftOut, use, QStringLiteral("it refers to itself"), "href");
        return nullptr;
    }
    return target;
}

}  // namespace

void convertUse(Conversion& conversion, const SourceElement& use, const Place& place, OutputElement& out,
                Target& target) {
    const SourceElement* origin = targetOf(conversion, use);
    if (!origin) return;
    if (!target.isMeasured)
        addNote(conversion, NoteCode::kResolved, use, QStringLiteral("a copy of what it refers to"));
    Place inner = place;
    inner.ctm =
        place.ctm * Matrix::translation(lengthOf(conversion, use, Name::kX, Axis::kHorizontal, place, 0.0),
                                        lengthOf(conversion, use, Name::kY, Axis::kVertical, place, 0.0));
    Group group(conversion, use, place, target);
    {
        const Visit visit(conversion.visited, use);
        if (origin->tag() == Tag::kSymbol || origin->tag() == Tag::kSvg) {
            const Place symbol = placeOf(conversion, *origin, inner);
            if (symbol.style[Property::kDisplay] != u"none" && conversion.budget.spend()) {
                convertViewport(conversion, *origin, use, symbol, group.output(), target);
            }
        } else {
            convertElement(conversion, *origin, inner, group.output(), target);
        }
    }
    group.finish(out);
}

void convertViewport(Conversion& conversion, const SourceElement& element, const SourceElement& sized,
                     const Place& place, OutputElement& out, Target& target) {
    const double width = extentOf(conversion, element, sized, Name::kWidth, Axis::kHorizontal, place);
    const double height = extentOf(conversion, element, sized, Name::kHeight, Axis::kVertical, place);
    if (width <= 0.0 || height <= 0.0) return;
    Matrix ctm = place.ctm;
    if (element.tag() == Tag::kSvg) {
        ctm =
            ctm * Matrix::translation(lengthOf(conversion, element, Name::kX, Axis::kHorizontal, place, 0.0),
                                      lengthOf(conversion, element, Name::kY, Axis::kVertical, place, 0.0));
    }
    Place inside{ctm, place.style, {width, height}};
    if (const std::optional<ViewBox> box = readViewBox(element.attribute(Name::kViewBox))) {
        inside.ctm = ctm * fitViewBox(*box, element.attribute(Name::kPreserveAspectRatio), width, height);
        inside.viewport = {box->width, box->height};
    }
    Group group(conversion, element, place, target);
    const QStringView overflow = place.style[Property::kOverflow];
    if (overflow != u"visible" && overflow != u"auto") {
        group.clipTo(rectangleOutline({0.0, 0.0, width, height}).mapped(ctm));
    }
    {
        // What stands where it is drawn keeps its ids; see keepId.
        std::optional<Visit> visit;
        if (&sized != &element) visit.emplace(conversion.visited, element);
        convertChildren(conversion, element, inside, group.output(), target);
    }
    group.finish(out);
}

}  // namespace tznormalize
