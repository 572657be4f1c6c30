#include "normalize/paint/FilterPrimitives.h"

#include <cmath>
#include <iterator>

#include "normalize/content/EmbeddedPicture.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

constexpr const char* kPrimitives[] = {"feBlend",
                                       "feColorMatrix",
                                       "feComponentTransfer",
                                       "feComposite",
                                       "feConvolveMatrix",
                                       "feDiffuseLighting",
                                       "feDisplacementMap",
                                       "feDistantLight",
                                       "feDropShadow",
                                       "feFlood",
                                       "feFuncA",
                                       "feFuncB",
                                       "feFuncG",
                                       "feFuncR",
                                       "feGaussianBlur",
                                       "feImage",
                                       "feMerge",
                                       "feMergeNode",
                                       "feMorphology",
                                       "feOffset",
                                       "fePointLight",
                                       "feSpecularLighting",
                                       "feSpotLight",
                                       "feTile",
                                       "feTurbulence"};

// The name as a literal; null for names that are no primitive's.
const char* primitiveName(QStringView name) {
    for (const char* const one : kPrimitives) {
        if (name == QLatin1String(one)) return one;
    }
    return nullptr;
}

// By how much lengths along the page's axes grow from the object's space to the page.
struct Growth {
    explicit Growth(const Matrix& ctm)
        : x(std::hypot(ctm.a, ctm.b)), y(std::hypot(ctm.c, ctm.d)), either(ctm.areaScale()) {
        if (std::abs(ctm.a) < std::abs(ctm.b)) std::swap(x, y);  // turned by a quarter
    }
    double x, y, either;
};

class Primitive {
  public:
    Primitive(Conversion& conversion, const SourceElement& source, const Style& parent, const FilterUse& use,
              const char* name)
        : conversion_(conversion),
          source_(source),
          style_(conversion.styles.computed(source, parent, use.place.viewport)),
          use_(use),
          growth_(use.place.ctm),
          out_(name) {}

    OutputElement convert() {
        for (const SourceAttribute& one : source_) setAttribute(one);
        const QStringView name = source_.localName();
        if (name == u"feOffset" || name == u"feDropShadow") setOffset();
        if (name == u"fePointLight" || name == u"feSpotLight") {
            setLightPoint(Name::kX, Name::kY, "x", "y");
            setLightPoint(Name::kPointsAtX, Name::kPointsAtY, "pointsAtX", "pointsAtY");
        } else {
            setSubregion();
        }
        if (name == u"feImage") setPicture();
        if (name == u"feTurbulence")
            addNote(conversion_, NoteCode::kApproximated, source_,
                    QStringLiteral("its noise has another grain"));
        setColors();
        for (const SourceElement* child = source_.firstChild(); child; child = child->nextSibling())
            appendPrimitive(conversion_, *child, style_, use_, out_);
        return std::move(out_);
    }

  private:
    double unitWidth() const { return use_.unit ? use_.unit->width() : 1.0; }
    double unitHeight() const { return use_.unit ? use_.unit->height() : 1.0; }
    double number(Name name) const { return readNumber(source_.attribute(name)).value_or(0.0); }

    void setPair(const char* name, QStringView text, double x, double y) {
        const std::vector<double> values = readNumbers(text);
        if (values.empty()) return;
        const double second = values.size() > 1 ? values[1] : values[0];
        out_.set(name, shortNumber(values[0] * x) + ' ' + shortNumber(second * y));
    }

    void setAttribute(const SourceAttribute& attribute) {
        const AttributeName& name = *attribute.name;
        if (!name.namespaceUri.isEmpty() || propertyOf(name.name)) return;
        const char* const written = name.written.c_str();
        switch (name.name) {
            case Name::kId:
            case Name::kClass:
            case Name::kStyle:
            case Name::kHref:
            case Name::kXmlSpace:
            case Name::kKernelUnitLength:  // of pixels that differ from page to page
            case Name::kDx:
            case Name::kDy:
            case Name::kPointsAtX:
            case Name::kPointsAtY:
                return;
            case Name::kStdDeviation:
            case Name::kRadius:
                return setPair(written, attribute.value, unitWidth() * growth_.x, unitHeight() * growth_.y);
            case Name::kBaseFrequency:
                return setPair(written, attribute.value, 1.0 / growth_.x, 1.0 / growth_.y);
            case Name::kSurfaceScale:
            case Name::kScale:
            case Name::kZ:
            case Name::kPointsAtZ:
                return out_.set(written, shortNumber(number(name.name) * growth_.either));
            default:
                return out_.set(written, attribute.value.toString().simplified().toStdString());
        }
    }

    void setOffset() {
        const Matrix& ctm = use_.place.ctm;
        const double dx = number(Name::kDx) * unitWidth();
        const double dy = number(Name::kDy) * unitHeight();
        out_.set("dx", shortNumber(ctm.a * dx + ctm.c * dy));
        out_.set("dy", shortNumber(ctm.b * dx + ctm.d * dy));
    }

    void setLightPoint(Name x, Name y, const char* xText, const char* yText) {
        if (!source_.has(x) && !source_.has(y)) return;
        const Point point = use_.place.ctm.map({number(x), number(y)});
        out_.set(xText, shortNumber(point.x));
        out_.set(yText, shortNumber(point.y));
    }

    // What part of the region the primitive fills; upright ones only, others fill all of it.
    void setSubregion() {
        const Matrix& ctm = use_.place.ctm;
        if (ctm.isTurned()) return;
        setLength(Name::kX, "x", Axis::kHorizontal, use_.unit ? use_.unit->left : 0.0, ctm.a, ctm.e);
        setLength(Name::kY, "y", Axis::kVertical, use_.unit ? use_.unit->top : 0.0, ctm.d, ctm.f);
        setLength(Name::kWidth, "width", Axis::kHorizontal, 0.0, std::abs(ctm.a), 0.0);
        setLength(Name::kHeight, "height", Axis::kVertical, 0.0, std::abs(ctm.d), 0.0);
    }

    void setLength(Name name, const char* text, Axis axis, double start, double scale, double shift) {
        const QStringView value = source_.attribute(name);
        if (value.isNull()) return;
        const std::optional<double> length =
            use_.unit ? readShare(value) : readLength(value, axis, use_.place.viewport, style_.fontSize());
        if (!length) return;
        const double whole = !use_.unit ? 1.0 : axis == Axis::kHorizontal ? unitWidth() : unitHeight();
        out_.set(text, shortNumber(scale * (start + *length * whole) + shift));
    }

    void setPicture() {
        const QStringView link = source_.href();
        if (link.startsWith(u'#')) {
            addNote(conversion_, NoteCode::kLeftOut, source_,
                    QStringLiteral("the drawn element that it shows"));
            return;
        }
        std::string picture = pictureData(conversion_, source_, link);
        if (!picture.empty()) out_.set("xlink:href", std::move(picture));
    }

    void setColors() {
        double opacity = readOpacity(style_[Property::kFloodOpacity]);
        const auto set = [&](Property property, const char* name, bool hasOpacity) {
            const std::optional<Color> color = readColor(style_[property], style_.currentColor());
            if (!color) return;
            const std::string text = colorText(*color);
            if (text != colorText(readColor(initialValue(property), Color{}).value_or(Color{})))
                out_.set(name, text);
            if (hasOpacity) opacity *= color->opacity;
        };
        set(Property::kFloodColor, "flood-color", true);
        set(Property::kLightingColor, "lighting-color", false);
        if (opacity != 1.0) out_.set("flood-opacity", shortNumber(opacity));
        const QStringView space = style_[Property::kColorInterpolationFilters];
        if (space == u"sRGB") out_.set("color-interpolation-filters", "sRGB");
    }

    Conversion& conversion_;
    const SourceElement& source_;
    const Style style_;
    const FilterUse& use_;
    const Growth growth_;
    OutputElement out_;
};

}  // namespace

void appendPrimitive(Conversion& conversion, const SourceElement& primitive, const Style& parent,
                     const FilterUse& use, OutputElement& out) {
    if (primitive.tag() != Tag::kFilterPrimitive) return;
    if (const char* const name = primitiveName(primitive.localName()))
        out.append(Primitive(conversion, primitive, parent, use, name).convert());
    else
        addNote(conversion, NoteCode::kLeftOut, primitive, QStringLiteral("no such filter primitive"));
}

}  // namespace tznormalize
