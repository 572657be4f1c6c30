#include "normalize/style/Selector.h"

#include <QString>

#include "normalize/style/CssText.h"

namespace tznormalize {
namespace {

constexpr size_t kMostCompounds = 32;
constexpr uint32_t kIdWeight = 1 << 20;
constexpr uint32_t kClassWeight = 1 << 10;

bool isHexDigit(QChar c) {
    return QStringView(u"0123456789abcdefABCDEF").contains(c);
}

bool hasWord(QStringView list, QStringView word) {
    if (word.isEmpty()) return false;
    for (auto at = list.indexOf(word); at >= 0; at = list.indexOf(word, at + 1)) {
        const auto end = at + word.size();
        const bool startsThere = at == 0 || list[at - 1].isSpace();
        if (startsThere && (end == list.size() || list[end].isSpace())) return true;
    }
    return false;
}

bool isMatch(const AttributeTest& test, QStringView value) {
    const bool hasText = !test.value.isEmpty();
    switch (test.match) {
        case AttributeMatch::kPresent:
            return true;
        case AttributeMatch::kEqual:
            return value == test.value;
        case AttributeMatch::kWord:
            return hasWord(value, test.value);
        case AttributeMatch::kLanguage:
            return value == test.value ||
                   (value.startsWith(test.value) && value.mid(test.value.size()).startsWith(u'-'));
        case AttributeMatch::kStart:
            return hasText && value.startsWith(test.value);
        case AttributeMatch::kEnd:
            return hasText && value.endsWith(test.value);
        case AttributeMatch::kContains:
            return hasText && value.contains(test.value);
    }
    return false;
}

bool passes(const AttributeTest& test, const SourceElement& element) {
    for (const SourceAttribute& one : element) {
        if (one.name->localName == test.name) return isMatch(test, one.value);
    }
    return false;
}

bool isMatch(const CompoundSelector& compound, const SourceElement& element,
             const PreviousSiblings& previous) {
    if (!compound.type.isEmpty() && compound.type != element.localName()) return false;
    if (!compound.id.isEmpty() && compound.id != element.id()) return false;
    if (compound.isRoot && element.parent()) return false;
    if (compound.isFirstChild && (!element.parent() || previous[element.index()])) return false;
    if (!compound.classes.empty()) {
        const QStringView classes = element.attribute(Name::kClass);
        for (const QStringView one : compound.classes) {
            if (!hasWord(classes, one)) return false;
        }
    }
    for (const AttributeTest& test : compound.attributes) {
        if (!passes(test, element)) return false;
    }
    return true;
}

// The element that is to the left of `element` next, by the combinator.
const SourceElement* leftOf(const SourceElement& element, Combinator combinator,
                            const PreviousSiblings& previous) {
    const bool isSibling = combinator == Combinator::kNext || combinator == Combinator::kLater;
    return isSibling ? previous[element.index()] : element.parent();
}

class SelectorReader {
  public:
    SelectorReader(QStringView text, Selector& selector, TextArena& texts)
        : text_(text), selector_(selector), texts_(texts) {}

    SelectorKind read() {
        text_ = text_.trimmed();
        if (text_.isEmpty()) return SelectorKind::kNotUnderstood;
        Combinator combinator = Combinator::kDescendant;
        while (true) {
            CompoundSelector compound;
            compound.toTheLeft = combinator;
            const SelectorKind kind = readCompound(compound);
            if (kind != SelectorKind::kRead) return kind;
            if (selector_.compounds.size() >= kMostCompounds) return SelectorKind::kNotUnderstood;
            selector_.compounds.push_back(std::move(compound));
            if (atEnd()) return SelectorKind::kRead;
            if (!readCombinator(combinator)) return SelectorKind::kNotUnderstood;
        }
    }

  private:
    bool atEnd() const { return at_ >= text_.size(); }
    QChar peek() const { return atEnd() ? QChar() : text_[at_]; }
    void skipBlanks() {
        while (!atEnd() && peek().isSpace()) ++at_;
    }

    bool readCombinator(Combinator& combinator) {
        skipBlanks();
        combinator = peek() == u'>'   ? Combinator::kChild
                     : peek() == u'+' ? Combinator::kNext
                     : peek() == u'~' ? Combinator::kLater
                                      : Combinator::kDescendant;
        if (combinator != Combinator::kDescendant) ++at_;
        skipBlanks();
        return !atEnd();
    }

    SelectorKind readCompound(CompoundSelector& compound) {
        const qsizetype start = at_;
        if (peek() == u'*') {
            ++at_;
        } else if (isNameCharacter(peek())) {
            compound.type = readName();
            ++selector_.specificity;
        }
        if (peek() == u'|') {  // a prefix before: drawings have one namespace to speak of
            ++at_;
            compound.type = peek() == u'*' ? QStringView(u"") : readName();
            if (peek() == u'*') ++at_;
        }
        while (!atEnd() && !peek().isSpace() && !QStringView(u">+~").contains(peek())) {
            const SelectorKind kind = readSimple(compound);
            if (kind != SelectorKind::kRead) return kind;
        }
        return at_ > start ? SelectorKind::kRead : SelectorKind::kNotUnderstood;
    }

    SelectorKind readSimple(CompoundSelector& compound) {
        const QChar mark = peek();
        ++at_;
        if (mark == u'#') {
            compound.id = readName();
            selector_.specificity += kIdWeight;
            return compound.id.isEmpty() ? SelectorKind::kNotUnderstood : SelectorKind::kRead;
        }
        selector_.specificity += kClassWeight;
        if (mark == u'.') {
            compound.classes.push_back(readName());
            return compound.classes.back().isEmpty() ? SelectorKind::kNotUnderstood : SelectorKind::kRead;
        }
        if (mark == u'[') return readAttribute(compound);
        if (mark == u':') return readPseudo(compound);
        return SelectorKind::kNotUnderstood;
    }

    SelectorKind readPseudo(CompoundSelector& compound) {
        if (peek() == u':') return SelectorKind::kNeverMatches;
        const QStringView name = readName();
        if (name == u"first-child") {
            compound.isFirstChild = true;
        } else if (name == u"root") {
            compound.isRoot = true;
        } else {
            for (const QStringView never : {u"hover", u"active", u"focus", u"visited", u"target", u"before",
                                            u"after", u"first-line", u"first-letter"}) {
                if (name == never) return SelectorKind::kNeverMatches;
            }
            return name == u"link" ? SelectorKind::kRead : SelectorKind::kNotUnderstood;
        }
        return SelectorKind::kRead;
    }

    SelectorKind readAttribute(CompoundSelector& compound) {
        const qsizetype end = closingOf(text_, at_ - 1);
        QStringView inside = text_.mid(at_, end - at_).trimmed();
        at_ = end + 1;
        AttributeTest test;
        qsizetype length = 0;
        while (length < inside.size() && (isNameCharacter(inside[length]) || inside[length] == u':'))
            ++length;
        test.name = inside.left(length);
        inside = inside.mid(length).trimmed();
        if (test.name.isEmpty()) return SelectorKind::kNotUnderstood;
        if (!inside.isEmpty()) {
            if (!readOperator(inside, test.match)) return SelectorKind::kNotUnderstood;
            inside = inside.trimmed();
            if (inside.size() >= 2 && (inside.startsWith(u'"') || inside.startsWith(u'\'')))
                inside = inside.mid(1, inside.size() - 2);
            test.value = inside;
        }
        compound.attributes.push_back(test);
        return SelectorKind::kRead;
    }

    // Takes the operator off the front of the text.
    static bool readOperator(QStringView& text, AttributeMatch& match) {
        constexpr struct {
            QStringView text;
            AttributeMatch match;
        } kOperators[] = {{u"=", AttributeMatch::kEqual},     {u"~=", AttributeMatch::kWord},
                          {u"|=", AttributeMatch::kLanguage}, {u"^=", AttributeMatch::kStart},
                          {u"$=", AttributeMatch::kEnd},      {u"*=", AttributeMatch::kContains}};
        for (const auto& one : kOperators) {
            if (!text.startsWith(one.text)) continue;
            match = one.match;
            text = text.mid(one.text.size());
            return true;
        }
        return false;
    }

    QStringView readName() {
        const qsizetype start = at_;
        bool hasEscapes = false;
        while (!atEnd() && isNameCharacter(peek())) {
            if (peek() == u'\\') {
                hasEscapes = true;
                skipEscape();
            } else {
                ++at_;
            }
        }
        const QStringView name = text_.mid(start, at_ - start);
        return hasEscapes ? texts_.keep(unescaped(name)) : name;
    }

    // A character by its number, which one blank ends, or a character that stands for itself.
    void skipEscape() {
        ++at_;
        const qsizetype start = at_;
        while (!atEnd() && at_ < start + 6 && isHexDigit(peek())) ++at_;
        if (!atEnd() && (at_ == start || peek().isSpace())) ++at_;
    }

    // "\31 st" and "\." as the characters that they stand for.
    static QString unescaped(QStringView name) {
        QString text;
        for (qsizetype i = 0; i < name.size(); ++i) {
            if (name[i] != u'\\') {
                text += name[i];
                continue;
            }
            qsizetype end = i + 1;
            while (end < name.size() && end <= i + 6 && isHexDigit(name[end])) ++end;
            if (end == i + 1) continue;  // the character behind stands for itself
            text += QChar(ushort(name.mid(i + 1, end - i - 1).toString().toUInt(nullptr, 16)));
            i = end < name.size() && name[end].isSpace() ? end : end - 1;
        }
        return text;
    }

    QStringView text_;
    qsizetype at_ = 0;
    Selector& selector_;
    TextArena& texts_;
};

}  // namespace

// From right to left. Where a compound may stand further up or further left, all such places are tried.
bool Selector::matches(const SourceElement& element, const PreviousSiblings& previous, Budget& budget) const {
    struct Place {
        size_t compound;
        const SourceElement* element;
    };
    if (budget == 0) return false;
    --budget;
    if (!isMatch(compounds.back(), element, previous)) return false;
    std::vector<Place> waiting = {{compounds.size() - 1, &element}};
    while (!waiting.empty()) {
        const Place place = waiting.back();
        waiting.pop_back();
        if (place.compound == 0) return true;
        const Combinator combinator = compounds[place.compound].toTheLeft;
        const bool isNear = combinator == Combinator::kChild || combinator == Combinator::kNext;
        for (const SourceElement* left = leftOf(*place.element, combinator, previous); left;
             left = leftOf(*left, combinator, previous)) {
            if (budget == 0) return false;
            --budget;
            if (isMatch(compounds[place.compound - 1], *left, previous))
                waiting.push_back({place.compound - 1, left});
            if (isNear) break;
        }
    }
    return false;
}

SelectorKind readSelector(QStringView text, Selector& selector, TextArena& texts) {
    return SelectorReader(text, selector, texts).read();
}

}  // namespace tznormalize
