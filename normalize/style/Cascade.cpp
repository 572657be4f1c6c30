#include "normalize/style/Cascade.h"

#include <array>
#include <vector>

#include "normalize/style/CssText.h"
#include "normalize/style/StyleSheets.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
// What is declared for one element.
class DeclaredValues {
  public:
    void clear() { mask_ = 0; }
    void set(Property property, QStringView value) {
        values_[size_t(property)] = value;
        mask_ |= uint64_t{1} << unsigned(property);
    }
    uint64_t mask() const { return mask_; }
    bool has(Property property) const { return (mask_ >> unsigned(property) & 1) != 0; }
    QStringView operator[](Property property) const {
        return has(property) ? values_[size_t(property)] : QStringView();
    }

  private:
    static_assert(kPropertyCount <= 64, "a bit for each property");

    std::array<QStringView, kPropertyCount> values_;
    uint64_t mask_ = 0;
};

namespace {

// The keywords of a font size, as parts of the initial one.
std::optional<double> keywordFontSize(QStringView text, double parent) {
    constexpr struct {
        QStringView word;
        double size;
    } kWords[] = {{u"xx-small", 6.9}, {u"x-small", 8.3},  {u"small", 10},     {u"medium", 12},
                  {u"large", 14.4},   {u"x-large", 17.3}, {u"xx-large", 20.7}};
    for (const auto& one : kWords) {
        if (text == one.word) return one.size;
    }
    if (text == u"larger") return parent * 1.2;
    if (text == u"smaller") return parent / 1.2;
    return std::nullopt;
}

double computedFontSize(QStringView text, double parent, const Viewport& viewport) {
    if (const auto size = keywordFontSize(text, parent)) return *size;
    if (text.endsWith(u'%')) return readShare(text).value_or(1.0) * parent;
    const auto size = readLength(text, Axis::kVertical, viewport, parent);
    return size && *size >= 0 ? *size : parent;
}

}  // namespace

struct Cascade::Rules {
    Rules(const SourceDocument& document, Notes& notes) : sheets(document, notes) {}

    StyleSheets sheets;

    // Of the element that was asked for last: it is asked for several properties in a row.
    const SourceElement* element = nullptr;
    DeclaredValues declared;

    // Style attributes with comments, without them: by the attribute's own text.
    QHash<const void*, QStringView> cleaned;
    TextArena texts;
    std::vector<Declaration> scratch;

    const DeclaredValues& of(const SourceElement& wanted);
    QStringView plainStyle(QStringView text);
};

QStringView Cascade::Rules::plainStyle(QStringView text) {
    if (!text.contains(u"/*")) return text;
    QStringView& kept = cleaned[text.data()];
    if (kept.isNull()) kept = texts.keep(withoutComments(text));
    return kept;
}

const DeclaredValues& Cascade::Rules::of(const SourceElement& wanted) {
    if (&wanted == element) return declared;
    element = &wanted;
    declared.clear();
    for (const SourceAttribute& one : wanted) {
        const auto property = propertyOf(one.name->name);
        if (!property) continue;
        const QStringView value = one.value.trimmed();
        if (!value.isEmpty() && isValidValue(*property, value)) declared.set(*property, value);
    }
    const QStringView style = wanted.attribute(Name::kStyle);
    if (style.isEmpty() && sheets.isEmpty()) return declared;
    scratch.clear();
    sheets.findDeclarations(wanted, scratch);
    if (!style.isEmpty()) readDeclarations(plainStyle(style), scratch);
    for (const Declaration& one : scratch) {
        if (!one.isImportant) declared.set(one.property, one.value);
    }
    for (const Declaration& one : scratch) {
        if (one.isImportant) declared.set(one.property, one.value);
    }
    return declared;
}

Cascade::Cascade(const SourceDocument& document, Notes& notes)
    : rules_(std::make_unique<Rules>(document, notes)) {}
Cascade::~Cascade() = default;

QStringView Cascade::declared(const SourceElement& element, Property property) const {
    return rules_->of(element)[property];
}

QStringView Cascade::geometryValue(const SourceElement& element, Name name) const {
    const auto property = propertyOf(name);
    return property ? declared(element, *property) : element.attribute(name);
}

Style Cascade::computed(const SourceElement& element, const Style& parent, const Viewport& viewport) const {
    static const Style kInitialStyle;
    const DeclaredValues& declared = rules_->of(element);
    Style style = parent;
    std::copy(kInitialStyle.values_.begin() + kInheritedCount, kInitialStyle.values_.end(),
              style.values_.begin() + kInheritedCount);
    if (declared.mask() == 0) return style;
    for (size_t i = 0; i < kStyleCount; ++i) {
        const auto property = Property(i);
        if (!declared.has(property)) continue;
        QStringView value = declared[property];
        if (value == kInherit || (value == kUnset && isInherited(property))) {
            value = parent[property];
            if (property == Property::kFontSize || property == Property::kColor) continue;
        } else if (value == kInitial || value == kUnset) {
            value = initialValue(property);
        }
        if (property == Property::kFontSize) {
            style.fontSize_ = computedFontSize(value, parent.fontSize(), viewport);
        }
        style.set(property, value);
    }
    return style;
}

Style Cascade::computedFromRoot(const SourceElement& element) const {
    std::vector<const SourceElement*> chain;
    for (const SourceElement* one = &element; one; one = one->parent()) chain.push_back(one);
    Style style;
    for (auto one = chain.rbegin(); one != chain.rend(); ++one) style = computed(**one, style, Viewport());
    return style;
}

}  // namespace tznormalize
