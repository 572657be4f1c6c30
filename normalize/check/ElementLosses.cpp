// The walk goes over the drawing as it is meant, and asks the module's tree at each element.
#include "normalize/check/ElementLosses.h"

#include "normalize/check/LossContext.h"
#include "normalize/check/PageLosses.h"
#include "normalize/check/ShapeLosses.h"
#include "normalize/style/Reference.h"
#include "normalize/text/Transform.h"
#include "normalize/text/ViewBox.h"

namespace tznormalize {
namespace {

constexpr FindingRule kText{"text", "becomes outlines of its fonts, with the words on their group"};
constexpr FindingRule kImage{"image", "carried as the fill of a polygon"};
constexpr FindingRule kUse{"use", "what it refers to is drawn in its place"};
constexpr FindingRule kForeign{"foreign", "stays left out, with a note"};
constexpr FindingRule kLink{"link", "what it holds stays, without the link"};
constexpr FindingRule kSwitch{"switch", "the alternative that applies is drawn"};
constexpr FindingRule kStyleSheet{"style-sheet", "its rules become attributes"};
constexpr FindingRule kScript{"script", "stays left out"};
constexpr FindingRule kLooseDefinition{"loose-definition", "kept among the definitions if something uses it"};
constexpr FindingRule kMovedEffect{"moved-effect", "transforms are baked into it"};

// Where an element stands.
struct LossPlace {
    Style style;    // of the parent
    Matrix matrix;  // of all elements around
    bool isHidden = false;
};

class LossWalk {
  public:
    explicit LossWalk(const LossContext& context) : context_(context) {}

    void visit(const SourceElement& element, const LossPlace& parent) {
        const CheckedElement& checked = context_.document.elements()[element.index()];
        checkElement(element, checked);
        if (!checked.isWalked) {
            visitChildren(element, parent);
            return;
        }
        LossPlace place{context_.cascade.computed(element, parent.style, context_.viewport), parent.matrix,
                        parent.isHidden};
        if (isShape(element.tag()) && checked.node->isShape()) {
            if (!parent.isHidden) checkShape(context_, element, place.style, parent.style, parent.matrix);
            return;
        }
        if (const auto own = readTransform(element.attribute(Name::kTransform)))
            place.matrix = parent.matrix * *own;
        place.isHidden =
            place.isHidden || place.style[Property::kDisplay] == u"none" || isLoose(element.tag());
        if (element.tag() == Tag::kG && !place.matrix.isIdentity()) checkEffects(element, place.style);
        visitChildren(element, place);
    }

  private:
    void visitChildren(const SourceElement& element, const LossPlace& place) {
        for (const SourceElement* child = element.firstChild(); child != nullptr;
             child = child->nextSibling())
            visit(*child, place);
    }

    // What draws nothing by itself, but is walked by the import unless it stands in "defs".
    static bool isLoose(Tag tag) {
        return tag == Tag::kSymbol || tag == Tag::kMask || tag == Tag::kMarker || tag == Tag::kFilter;
    }

    void checkElement(const SourceElement& element, const CheckedElement& checked) {
        if (element.tag() == Tag::kStyle) {
            if (!element.text().trimmed().isEmpty()) drop(kStyleSheet, element, "a style sheet is not seen");
        } else if (checked.isWalked) {
            checkWalked(element);
        }
    }

    void checkWalked(const SourceElement& element) {
        switch (element.tag()) {
            case Tag::kText:
                return drop(kText, element, "text is not imported");
            case Tag::kImage:
                return drop(kImage, element, "pictures are not imported");
            case Tag::kUse:
                return drop(kUse, element, "references are not followed");
            case Tag::kForeignObject:
            case Tag::kFlowRoot:
                return drop(kForeign, element, "is no part of a drawing");
            case Tag::kA:
                return drop(kLink, element, "a link is not kept");
            case Tag::kScript:
                return drop(kScript, element, "a script is not kept");
            case Tag::kSwitch:
                if (element.firstChild() == nullptr || element.firstChild()->nextSibling() == nullptr) return;
                return context_.add(FindingKind::kChanged, kSwitch, element, {},
                                    QStringLiteral("every alternative is drawn"));
            case Tag::kSymbol:
            case Tag::kMask:
            case Tag::kMarker:
                if (element.firstChild() == nullptr) return;
                return context_.add(
                    FindingKind::kChanged, kLooseDefinition, element, {},
                    QStringLiteral("outside of defs: what it holds is drawn as it stands there"));
            case Tag::kFilter:
                return drop(kLooseDefinition, element, "outside of defs: it is not kept");
            default:
                if (element.localName().startsWith(u"animate"))
                    drop(kScript, element, "an animation is not kept");
        }
    }

    void drop(const FindingRule& rule, const SourceElement& element, const char* text) const {
        context_.add(FindingKind::kDropped, rule, element, {}, QString::fromLatin1(text));
    }

    // Transforms of groups go into the points of what they hold; what a group refers to stays behind.
    void checkEffects(const SourceElement& group, const Style& style) const {
        for (const Property property : {Property::kClipPath, Property::kMask, Property::kFilter}) {
            if (readReference(style[property]).id.isNull()) continue;
            context_.add(FindingKind::kChanged, kMovedEffect, group, textOf(nameOf(property)),
                         QStringLiteral("it does not move with the transform of its group"));
        }
    }

    const LossContext& context_;
};

Viewport rootViewport(const SourceElement& root) {
    if (const auto box = readViewBox(root.attribute(Name::kViewBox))) return {box->width, box->height};
    constexpr Viewport kNone{100, 100};
    constexpr double kFontSize = 12;
    return {
        readLength(root.attribute(Name::kWidth), Axis::kHorizontal, kNone, kFontSize).value_or(kNone.width),
        readLength(root.attribute(Name::kHeight), Axis::kVertical, kNone, kFontSize).value_or(kNone.height)};
}

}  // namespace

void checkLosses(const CheckedDocument& document, const ImportedGeometry& geometry, CheckReport& report) {
    const SourceDocument* const source = document.source();
    if (source == nullptr) return;
    Notes notes;  // of sheets that are not followed: nothing for the import, which follows none
    const Cascade cascade(*source, notes);
    const LossContext context{document, geometry, cascade, rootViewport(source->root()), report};
    LossWalk(context).visit(source->root(), {});
    if (!report.isRefused()) checkPage(context);
}

}  // namespace tznormalize
