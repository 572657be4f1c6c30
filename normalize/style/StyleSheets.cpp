#include "normalize/style/StyleSheets.h"

#include <algorithm>

#include "normalize/style/CssText.h"

namespace tznormalize {
namespace {

constexpr size_t kMostRules = 100'000;
constexpr int kMostNestedBlocks = 16;

// Steps of matching for each element, on average, and for small documents.
constexpr uint64_t kStepsPerElement = 500;
constexpr uint64_t kStepsAtLeast = 10'000'000;

// Whether what is meant for a kind of media is meant for pictures on a screen.
bool isForScreens(QStringView media) {
    return !media.contains(u"print", Qt::CaseInsensitive);
}

bool isCss(QStringView type) {
    type = type.trimmed();
    return type.isEmpty() || type.compare(u"text/css", Qt::CaseInsensitive) == 0;
}

// <link rel="stylesheet">, of whichever namespace.
bool isLinkToSheet(const SourceElement& element) {
    if (element.tag() != Tag::kOther && element.tag() != Tag::kForeign) return false;
    return element.localName() == u"link" &&
           std::any_of(element.begin(), element.end(), [](const SourceAttribute& one) {
               return one.name->localName == u"rel" && one.value.contains(u"stylesheet", Qt::CaseInsensitive);
           });
}

QString linkedSheet() {
    return QStringLiteral("a style sheet of another file");
}

}  // namespace

StyleSheets::StyleSheets(const SourceDocument& document, Notes& notes) : notes_(notes) {
    if (document.linksStyleSheet()) notes.add(NoteCode::kLeftOut, document.root(), linkedSheet());
    for (uint32_t i = 0; i < document.elementCount(); ++i) {
        const SourceElement& element = document.element(i);
        if (isLinkToSheet(element)) notes.add(NoteCode::kLeftOut, element, linkedSheet());
        if (element.tag() != Tag::kStyle || !isCss(element.attribute(Name::kType))) continue;
        if (!isForScreens(element.attribute(Name::kMedia))) continue;
        sheet_ = &element;
        readSheet(texts_.keep(withoutComments(element.text())), 0);
    }
    if (rules_.empty()) return;
    budget_ = std::max(kStepsAtLeast, kStepsPerElement * document.elementCount());
    previous_.resize(document.elementCount());
    for (uint32_t i = 0; i < document.elementCount(); ++i) {
        const SourceElement& element = document.element(i);
        if (const SourceElement* const next = element.nextSibling()) previous_[next->index()] = &element;
    }
}

void StyleSheets::note(const QString& text) {
    notes_.add(NoteCode::kLeftOut, *sheet_, text);
}

void StyleSheets::readSheet(QStringView css, int depth) {
    while (true) {
        css = css.trimmed();
        if (css.isEmpty()) return;
        const qsizetype end = findOutside(css, u";{");
        const QStringView prelude = css.left(end).trimmed();
        const bool hasBlock = end < css.size() && css[end] == u'{';
        const qsizetype close = hasBlock ? closingOf(css, end) : end;
        const QStringView block = hasBlock ? css.mid(end + 1, close - end - 1) : QStringView();
        if (prelude.startsWith(u'@')) {
            readAtRule(prelude, block, depth);
        } else if (hasBlock) {
            readRule(prelude, block);
        }
        css = behind(css, close);
    }
}

void StyleSheets::readAtRule(QStringView prelude, QStringView block, int depth) {
    qsizetype end = 1;
    while (end < prelude.size() && isNameCharacter(prelude[end])) ++end;
    const QString name = prelude.left(end).toString().toLower();
    if (name == QLatin1String("@media")) {
        if (isForScreens(prelude) && depth < kMostNestedBlocks) readSheet(block, depth + 1);
    } else if (name != QLatin1String("@charset") && name != QLatin1String("@namespace")) {
        note(QStringLiteral("rule %1 of the style sheet left out").arg(name));
    }
}

void StyleSheets::readRule(QStringView selectors, QStringView block) {
    const auto first = uint32_t(declarations_.size());
    readDeclarations(block, declarations_);
    if (declarations_.size() == first) return;
    while (!selectors.isEmpty()) {
        const qsizetype end = findOutside(selectors, u",");
        const QStringView text = selectors.left(end).trimmed();
        selectors = behind(selectors, end);
        Selector selector;
        const SelectorKind kind = readSelector(text, selector, texts_);
        if (kind == SelectorKind::kRead && rules_.size() < kMostRules) {
            addRule(std::move(selector), first);
        } else if (kind != SelectorKind::kNeverMatches) {
            constexpr int kLongest = 60;
            note(QStringLiteral("selector \"%1\" of the style sheet left out")
                     .arg(text.toString().simplified().left(kLongest)));
        }
    }
}

void StyleSheets::addRule(Selector selector, uint32_t firstDeclaration) {
    const auto number = uint32_t(rules_.size());
    rules_.push_back({std::move(selector), firstDeclaration, uint32_t(declarations_.size())});
    const CompoundSelector& last = rules_.back().selector.compounds.back();
    RuleList& list = !last.id.isEmpty()      ? byId_[last.id]
                     : !last.classes.empty() ? byClass_[last.classes.front()]
                     : !last.type.isEmpty()  ? byType_[last.type]
                                             : others_;
    list.push_back(number);
}

void StyleSheets::collect(const RuleList& rules, const SourceElement& element) {
    for (const uint32_t number : rules) {
        if (rules_[number].selector.matches(element, previous_, budget_)) found_.push_back(number);
    }
}

void StyleSheets::collectListed(const QHash<QStringView, RuleList>& lists, QStringView name,
                                const SourceElement& element) {
    if (lists.isEmpty() || name.isEmpty()) return;
    const auto rules = lists.constFind(name);
    if (rules != lists.constEnd()) collect(*rules, element);
}

void StyleSheets::findDeclarations(const SourceElement& element, std::vector<Declaration>& declarations) {
    if (rules_.empty()) return;
    found_.clear();
    collectListed(byId_, element.id(), element);
    if (!byClass_.isEmpty()) {
        QStringView classes = element.attribute(Name::kClass);
        while (!classes.isEmpty()) {
            qsizetype end = 0;
            while (end < classes.size() && !classes[end].isSpace()) ++end;
            collectListed(byClass_, classes.left(end), element);
            classes = behind(classes, end);
        }
    }
    collectListed(byType_, element.localName(), element);
    collect(others_, element);
    if (budget_ == 0) note(QStringLiteral("rules of the style sheet left out: too much to match"));
    std::sort(found_.begin(), found_.end(), [this](uint32_t a, uint32_t b) {
        const uint32_t left = rules_[a].selector.specificity;
        const uint32_t right = rules_[b].selector.specificity;
        return left != right ? left < right : a < b;
    });
    // A class named twice finds its rules twice.
    found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
    for (const uint32_t number : found_) {
        const Rule& rule = rules_[number];
        declarations.insert(declarations.end(), declarations_.begin() + rule.firstDeclaration,
                            declarations_.begin() + rule.endDeclaration);
    }
}

}  // namespace tznormalize
