// What is meant comes from the cascade, what is kept from the module's readers.
#include "normalize/check/ShapeLosses.h"

#include "normalize/check/OutlineLosses.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/geometry/SubPaths.h"
#include "normalize/style/Reference.h"
#include "normalize/text/NumberCursor.h"
#include "svg/text/StyleProperty.h"

namespace tznormalize {
namespace {

using tzsvg::Attribute;

constexpr FindingRule kHidden{"hidden", "hidden shapes are left out"};
constexpr FindingRule kStroke{"stroke", "written as a black line without width and opacity"};
constexpr FindingRule kStrokePaint{"stroke-paint",
                                   "colours are written as #rrggbb; painted strokes become areas"};
constexpr FindingRule kStrokeWidth{"stroke-width", "the width is resolved and scaled"};
constexpr FindingRule kFill{"fill", "the paint is resolved into an attribute"};
constexpr FindingRule kMovedPaint{"moved-paint", "transforms are baked into the paint"};
constexpr FindingRule kUnseen{"unseen", "values are resolved into attributes"};
constexpr FindingRule kUnkept{"unkept", "carried on a group around the shape, or resolved"};
constexpr FindingRule kRectangle{"rect", "written as a polygon"};
constexpr FindingRule kClosing{"closing", "outlines run on a little past their start"};

class ShapeCheck {
  public:
    ShapeCheck(const LossContext& context, const SourceElement& shape, const Style& style,
               const Style& parent, const Matrix& matrix)
        : context_(context),
          shape_(shape),
          node_(*context.document.elements()[shape.index()].node),
          style_(style),
          parent_(parent),
          matrix_(matrix),
          styleText_(node_.attribute(Attribute::kStyle)),
          inStyle_(styleText_) {}

    void check() {
        if (checkHidden()) return;
        const Path outline = outlineOf(shape_, context_.cascade, context_.viewport, style_.fontSize());
        if (outline.isEmpty()) return;
        checkOutline(context_, shape_, style_, outline);
        if (outline.coversArea()) checkFill();
        checkStroke();
        if (isStroked()) checkClosing(outline);
        if (shape_.tag() == Tag::kRect) checkRectangle();
        checkValues();
    }

  private:
    void change(const FindingRule& rule, Property property, const QString& text) const {
        context_.add(FindingKind::kChanged, rule, shape_, textOf(nameOf(property)), text);
    }

    // As the import looks a value up: the style first, by its strict rule, then the attribute.
    QStringView kept(Attribute attribute) const {
        const QStringView value = inStyle_.value(nameOf(attribute));
        return value.isEmpty() ? node_.attribute(attribute) : value;
    }

    bool isDeclared(Property property) const { return !context_.cascade.declared(shape_, property).isNull(); }

    bool checkHidden() const {
        for (const Property property : {Property::kDisplay, Property::kVisibility}) {
            const QStringView value = style_[property];
            const bool isHidden = value == u"none" || value == u"hidden" || value == u"collapse";
            if (!isHidden) continue;
            if (isDeclared(property))
                change(kHidden, property, QStringLiteral("a hidden shape comes back visible"));
            return true;
        }
        return false;
    }

    bool isSamePaint(QStringView one, QStringView other) const {
        if (one.trimmed() == other.trimmed()) return true;
        const auto first = readColor(one, style_.currentColor());
        const auto second = readColor(other, style_.currentColor());
        return first && second && first->red == second->red && first->green == second->green &&
               first->blue == second->blue;
    }

    static bool isReference(QStringView paint) { return readReference(paint).isUrl; }

    // Whether the polygon ends on its own first point: only then a paint that is not written is inherited.
    bool endsOnFirstPoint() const {
        switch (node_.element()) {
            case tzsvg::Element::kCircle:
            case tzsvg::Element::kEllipse:
                return true;
            case tzsvg::Element::kRect:
                return node_.has(Attribute::kRx) || node_.has(Attribute::kRy);
            case tzsvg::Element::kPath:
                return endsWhereItBegan(node_);
            default:
                return false;
        }
    }

    void checkFill() const {
        const QStringView meant = style_[Property::kFill];
        QStringView back = kept(Attribute::kFill);
        if (back.isEmpty()) back = endsOnFirstPoint() ? parent_[Property::kFill] : QStringView(u"none");
        if (!isSamePaint(meant, back)) {
            change(kFill, Property::kFill, QStringLiteral("\"%1\" comes back as \"%2\"").arg(meant, back));
        } else if (isReference(meant) && !matrix_.isIdentity()) {
            change(kMovedPaint, Property::kFill,
                   QStringLiteral("\"%1\" does not move with the transforms around it").arg(meant));
        }
    }

    double strokeWidth() const {
        return readLength(style_[Property::kStrokeWidth], Axis::kNeither, context_.viewport,
                          style_.fontSize())
            .value_or(1.0);
    }

    bool isStroked() const {
        return style_[Property::kStroke] != u"none" && strokeWidth() > 0 &&
               readOpacity(style_[Property::kStrokeOpacity]) > 0;
    }

    // Colour, width and opacity come back on every shape: what it does not name itself is a black line of a
    // width that the export chooses.
    void checkStroke() const {
        const QStringView color = kept(Attribute::kStroke);
        const QStringView width = kept(Attribute::kStrokeWidth);
        const QStringView opacity = kept(Attribute::kStrokeOpacity);
        const bool isBackVisible =
            (width.isEmpty() ||
             readLength(width, Axis::kNeither, context_.viewport, style_.fontSize()).value_or(1) > 0) &&
            (opacity.isEmpty() || readOpacity(opacity) > 0);
        const QStringView meant = style_[Property::kStroke];
        if (!isStroked()) {
            if (isBackVisible)
                change(kStroke, Property::kStroke, QStringLiteral("no stroke comes back as a black line"));
            return;
        }
        const QStringView back = color.startsWith(u'#') ? color : QStringView(u"#000000");
        if (isReference(meant) || !isSamePaint(meant, back)) {
            change(kStrokePaint, Property::kStroke,
                   QStringLiteral("\"%1\" comes back as \"%2\"").arg(meant, back));
        }
        if (width.isEmpty() || (opacity.isEmpty() && readOpacity(style_[Property::kStrokeOpacity]) < 1)) {
            const Property lost = width.isEmpty() ? Property::kStrokeWidth : Property::kStrokeOpacity;
            change(kStrokeWidth, lost,
                   QStringLiteral("inherited or initial: comes back as the export's own"));
        } else if (!matrix_.isEven() || std::abs(matrix_.areaScale() - 1) > 1e-3) {
            change(kStrokeWidth, Property::kStrokeWidth,
                   QStringLiteral("it is not scaled with the groups around it"));
        }
    }

    bool isDashed() const { return style_[Property::kStrokeDasharray] != u"none"; }

    // Paths come back without their "Z".
    void checkClosing(const Path& outline) const {
        if (shape_.tag() != Tag::kPath || !hasClosing(outline)) return;
        const bool isRound =
            style_[Property::kStrokeLinejoin] == u"round" && style_[Property::kStrokeLinecap] == u"round";
        if (isRound && !isDashed() && isClosedThroughout(outline)) return;
        constexpr double kStep = 1e-3;
        if (runOn(outline, strokeWidth() / 2, kStep, isDashed()).verbs() == outline.verbs()) return;
        context_.add(FindingKind::kChanged, kClosing, shape_, u"d",
                     QStringLiteral("the outline comes back open: its first corner has no join"));
    }

    void checkRectangle() const {
        const SourceElement* next = shape_.nextSibling();
        while (next != nullptr && !isShape(next->tag()) && next->tag() != Tag::kG) next = next->nextSibling();
        if (next == nullptr && !isStroked()) return;
        context_.add(
            FindingKind::kChanged, kRectangle, shape_, {},
            next == nullptr
                ? QStringLiteral("a rectangle comes back as an open outline")
                : QStringLiteral("a rectangle comes back as an open outline, and above what follows it"));
    }

    void checkValues() const {
        struct Value {
            Property property;
            Attribute attribute;
        };
        static constexpr Value kKept[] = {{Property::kFillOpacity, Attribute::kFillOpacity},
                                          {Property::kFillRule, Attribute::kFillRule},
                                          {Property::kOpacity, Attribute::kOpacity},
                                          {Property::kStrokeDasharray, Attribute::kDashArray},
                                          {Property::kStrokeDashoffset, Attribute::kDashOffset},
                                          {Property::kStrokeLinecap, Attribute::kLineCap},
                                          {Property::kStrokeLinejoin, Attribute::kLineJoin},
                                          {Property::kStrokeMiterlimit, Attribute::kMiterLimit},
                                          {Property::kClipPath, Attribute::kClipPath}};
        for (const Value& value : kKept) {
            if (!isDeclared(value.property)) continue;
            const QStringView meant = style_[value.property];
            const bool isInherited = tznormalize::isInherited(value.property);
            const QStringView otherwise =
                isInherited ? parent_[value.property] : initialValue(value.property);
            const QStringView back = kept(value.attribute);
            if (isSameValue(meant, back.isEmpty() ? otherwise : back)) continue;
            change(kUnseen, value.property,
                   QStringLiteral("\"%1\" of a style or sheet is not seen").arg(meant));
        }
        static constexpr Property kNotKept[] = {
            Property::kMask,      Property::kFilter,     Property::kMarkerStart,  Property::kMarkerMid,
            Property::kMarkerEnd, Property::kPaintOrder, Property::kVectorEffect, Property::kMixBlendMode};
        for (const Property property : kNotKept) {
            if (!isDeclared(property) || isSameValue(style_[property], initialValue(property))) continue;
            context_.add(FindingKind::kDropped, kUnkept, shape_, textOf(nameOf(property)),
                         QStringLiteral("shapes do not keep it"));
        }
    }

    static bool isSameValue(QStringView one, QStringView other) {
        one = one.trimmed();
        other = other.trimmed();
        if (one == other) return true;
        const auto first = readShare(one);
        const auto second = readShare(other);
        return first && second && *first == *second;
    }

    const LossContext& context_;
    const SourceElement& shape_;
    const tzsvg::XmlNode& node_;
    const Style& style_;
    const Style& parent_;
    const Matrix& matrix_;
    const QStringView styleText_;
    const tzsvg::StyleProperties inStyle_;
};

}  // namespace

void checkShape(const LossContext& context, const SourceElement& shape, const Style& style,
                const Style& parent, const Matrix& matrix) {
    ShapeCheck(context, shape, style, parent, matrix).check();
}

}  // namespace tznormalize
