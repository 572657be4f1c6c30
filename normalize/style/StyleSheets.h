// The rules of a document's style sheets, and which of them hold for an element.
#pragma once

#include <QHash>
#include <QStringView>
#include <vector>

#include "normalize/Notes.h"
#include "normalize/document/SourceDocument.h"
#include "normalize/document/TextArena.h"
#include "normalize/style/Declarations.h"
#include "normalize/style/Selector.h"

namespace tznormalize {

class StyleSheets {
  public:
    // Reads the style elements. Notes what of them is not followed; the notes must outlive the sheets.
    StyleSheets(const SourceDocument& document, Notes& notes);

    bool isEmpty() const { return rules_.empty(); }

    // The declarations of the rules that hold for the element, by specificity and then by order: later ones
    // win.
    void findDeclarations(const SourceElement& element, std::vector<Declaration>& declarations);

  private:
    struct Rule {
        Selector selector;
        uint32_t firstDeclaration;  // of declarations_
        uint32_t endDeclaration;
    };
    using RuleList = std::vector<uint32_t>;  // numbers of rules, in order

    void readSheet(QStringView css, int depth);
    void readAtRule(QStringView prelude, QStringView block, int depth);
    void readRule(QStringView selectors, QStringView block);
    void addRule(Selector selector, uint32_t firstDeclaration);
    void note(const QString& text);
    void collect(const RuleList& rules, const SourceElement& element);
    void collectListed(const QHash<QStringView, RuleList>& lists, QStringView name,
                       const SourceElement& element);

    Notes& notes_;
    const SourceElement* sheet_ = nullptr;  // the style element that is being read
    TextArena texts_;
    std::vector<Rule> rules_;
    std::vector<Declaration> declarations_;

    // Each rule is in one list: by what its last compound must have, so that few rules are tried on an
    // element.
    QHash<QStringView, RuleList> byId_;
    QHash<QStringView, RuleList> byClass_;
    QHash<QStringView, RuleList> byType_;
    RuleList others_;

    PreviousSiblings previous_;
    Selector::Budget budget_ = 0;
    RuleList found_;
};

}  // namespace tznormalize
