// A drawing as the check holds it: what the module makes of it beside what it says.
#pragma once

#include <QString>
#include <vector>

#include "normalize/check/Finding.h"
#include "normalize/document/SourceDocument.h"
#include "svg/tree/XmlDocument.h"

namespace tznormalize {

// One element, as the module has it. Its number is that of SourceElement::index().
struct CheckedElement {
    const tzsvg::XmlNode* node = nullptr;
    uint32_t parent = 0;   // its number; the root's is its own
    bool isWalked = true;  // not below "defs", "clipPath" or "pattern", where the import makes no geometry
};

class CheckedDocument {
  public:
    // Reads the bytes as the module and as the normalizer do. False when the module cannot: the report says
    // why.
    bool read(const QByteArray& bytes, CheckReport& report);

    const tzsvg::XmlDocument& tree() const { return tree_; }
    const std::vector<CheckedElement>& elements() const { return elements_; }

    // The elements as the drawing means them, by the same numbers; null when the normalizer does not read it.
    const SourceDocument* source() const { return isPaired_ ? &source_ : nullptr; }

    // Adds a finding at an element.
    void add(CheckReport& report, FindingKind kind, const FindingRule& rule, uint32_t element,
             QStringView attribute, const QString& text) const;

    // Adds one of the whole drawing.
    static void add(CheckReport& report, FindingKind kind, const FindingRule& rule, const QString& text);

  private:
    void listElements();

    tzsvg::XmlDocument tree_;
    SourceDocument source_;
    bool isPaired_ = false;
    std::vector<CheckedElement> elements_;
};

}  // namespace tznormalize
