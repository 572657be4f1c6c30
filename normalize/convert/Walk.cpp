#include "normalize/convert/Walk.h"

#include "normalize/content/Images.h"
#include "normalize/content/TextOutlines.h"
#include "normalize/convert/Groups.h"
#include "normalize/convert/Shapes.h"
#include "normalize/convert/Use.h"
#include "normalize/text/Transform.h"

namespace tznormalize {
namespace {

using ConvertContent = void (*)(Conversion&, const SourceElement&, const Place&, OutputElement&, Target&);

// A group around what `content` converts into it.
void convertGroup(Conversion& conversion, const SourceElement& element, const Place& place,
                  OutputElement& out, Target& target, ConvertContent content) {
    Group group(conversion, element, place, target);
    content(conversion, element, place, group.output(), target);
    group.finish(out);
}

void convertTextGroup(Conversion& conversion, const SourceElement& element, const Place& place,
                      OutputElement& out, Target& target) {
    Group group(conversion, element, place, target);
    group.setLabel(convertText(conversion, element, place, group.output(), target));
    group.finish(out);
}

bool namesEnglish(QStringView languages) {
    while (!languages.isEmpty()) {
        qsizetype end = languages.indexOf(u',');
        if (end < 0) end = languages.size();
        if (languages.left(end).trimmed().startsWith(u"en", Qt::CaseInsensitive)) return true;
        languages = languages.mid(std::min(end + 1, languages.size()));
    }
    return false;
}

// Whether a `switch` may take the child. There is one result for all readers: it speaks English, and has no
// extensions.
bool passesSwitch(const SourceElement& child) {
    if (child.tag() == Tag::kForeign || child.tag() == Tag::kForeignObject) return false;
    if (child.has(Name::kRequiredExtensions)) return false;
    const QStringView languages = child.attribute(Name::kSystemLanguage);
    return languages.isNull() || namesEnglish(languages);
}

void convertSwitch(Conversion& conversion, const SourceElement& element, const Place& place,
                   OutputElement& out, Target& target) {
    for (const SourceElement* child = element.firstChild(); child; child = child->nextSibling()) {
        if (!passesSwitch(*child)) continue;
        addNote(conversion, NoteCode::kResolved, element,
                QStringLiteral("only the branch that is shown was kept"));
        return convertElement(conversion, *child, place, out, target);
    }
}

void convertLink(Conversion& conversion, const SourceElement& element, const Place& place, OutputElement& out,
                 Target& target) {
    if (!element.href().isNull()) {
        addNote(conversion, NoteCode::kLeftOut, element,
                QStringLiteral("the link itself; what it shows was kept"), "href");
    }
    convertChildren(conversion, element, place, out, target);
}

bool hasText(const SourceElement& element) {
    if (!element.text().trimmed().isEmpty()) return true;
    for (const SourceElement* child = element.firstChild(); child; child = child->nextSibling()) {
        if (hasText(*child) || !child->tail().trimmed().isEmpty()) return true;
    }
    return false;
}

void noteUndrawn(Conversion& conversion, const SourceElement& element) {
    const QString name = element.localName().toString();
    switch (element.tag()) {
        case Tag::kForeignObject:
            addNote(conversion, NoteCode::kLeftOut, element, QStringLiteral("content of another kind"));
            return;
        case Tag::kFlowRoot:
            if (hasText(element))
                addNote(conversion, NoteCode::kLeftOut, element, QStringLiteral("flowed text"));
            return;
        case Tag::kScript:
            addNote(conversion, NoteCode::kLeftOut, element, QStringLiteral("a script"));
            return;
        case Tag::kTitle:
        case Tag::kDesc:
            if (element.parent() && element.parent()->tag() != Tag::kSvg) {
                addNote(conversion, NoteCode::kLeftOut, element, QStringLiteral("a description"));
            }
            return;
        case Tag::kOther:
            if (name.startsWith(QLatin1String("animate")) || name == QLatin1String("set")) {
                addNote(conversion, NoteCode::kLeftOut, element, QStringLiteral("an animation"));
            }
            return;
        default:
            return;
    }
}

// What stands in a shape is never drawn: animations, descriptions.
void noteChildren(Conversion& conversion, const SourceElement& shape, const Target& target) {
    if (target.isMeasured) return;
    for (const SourceElement* child = shape.firstChild(); child; child = child->nextSibling())
        noteUndrawn(conversion, *child);
}

bool isDrawn(Tag tag) {
    switch (tag) {
        case Tag::kA:
        case Tag::kG:
        case Tag::kImage:
        case Tag::kSvg:
        case Tag::kSwitch:
        case Tag::kText:
        case Tag::kUse:
            return true;
        default:
            return isShape(tag);
    }
}

void convertPlaced(Conversion& conversion, const SourceElement& element, const Place& place,
                   OutputElement& out, Target& target) {
    switch (element.tag()) {
        case Tag::kG:
            return convertGroup(conversion, element, place, out, target, convertChildren);
        case Tag::kA:
            return convertGroup(conversion, element, place, out, target, convertLink);
        case Tag::kSwitch:
            return convertGroup(conversion, element, place, out, target, convertSwitch);
        case Tag::kText:
            return convertTextGroup(conversion, element, place, out, target);
        case Tag::kImage:
            return convertGroup(conversion, element, place, out, target, convertImage);
        case Tag::kUse:
            return convertUse(conversion, element, place, out, target);
        case Tag::kSvg:
            return convertViewport(conversion, element, element, place, out, target);
        default:
            noteChildren(conversion, element, target);
            return convertShape(conversion, element, place, out, target);
    }
}

}  // namespace

Matrix ownTransform(const Style& style) {
    const QStringView text = style[Property::kTransform];
    return text.isEmpty() ? Matrix() : readTransform(text).value_or(Matrix());
}

Place placeOf(const Conversion& conversion, const SourceElement& element, const Place& parent) {
    Place place{parent.ctm, conversion.styles.computed(element, parent.style, parent.viewport),
                parent.viewport};
    if (!place.style[Property::kTransform].isEmpty()) place.ctm = parent.ctm * ownTransform(place.style);
    return place;
}

void convertElement(Conversion& conversion, const SourceElement& element, const Place& parent,
                    OutputElement& out, Target& target) {
    if (!isDrawn(element.tag())) {
        if (!target.isMeasured) noteUndrawn(conversion, element);
        return;
    }
    if (!conversion.budget.spend() || conversion.visited.contains(element)) return;
    const Nesting nesting(conversion);
    if (nesting.isTooDeep()) {
        addNote(conversion, NoteCode::kLeftOut, element, QStringLiteral("nested too deep"));
        return;
    }
    const Place place = placeOf(conversion, element, parent);
    if (place.style[Property::kDisplay] == u"none" || place.ctm.isFlat() || !place.ctm.isFinite()) return;
    convertPlaced(conversion, element, place, out, target);
}

void convertChildren(Conversion& conversion, const SourceElement& element, const Place& place,
                     OutputElement& out, Target& target) {
    for (const SourceElement* child = element.firstChild(); child; child = child->nextSibling()) {
        convertElement(conversion, *child, place, out, target);
    }
}

}  // namespace tznormalize
