#include "normalize/check/CheckedDocument.h"

#include "normalize/check/Recognition.h"
#include "svg/tree/DocumentText.h"

namespace tznormalize {

bool CheckedDocument::read(const QByteArray& bytes, CheckReport& report) {
    const QString text = tzsvg::decodeDocument(bytes);
    // As the import joins it: lines with nothing between them.
    QString joined = text;
    joined.remove(u'\n');
    joined.remove(u'\r');
    if (!tree_.read(joined)) {
        addUnreadable(report, bytes, text, joined);
        return false;
    }
    listElements();
    isPaired_ = !source_.read(bytes) && source_.elementCount() == elements_.size();
    return checkRoots(*this, report);
}

void CheckedDocument::listElements() {
    std::vector<uint32_t> open;  // the elements around
    for (const tzsvg::XmlNode* node = tree_.top().nextBelow(tree_.top()); node != nullptr;
         node = node->nextBelow(tree_.top())) {
        if (!node->isElement()) continue;
        while (!open.empty() && elements_[open.back()].node != node->parent()) open.pop_back();
        const auto number = static_cast<uint32_t>(elements_.size());
        CheckedElement element{node, number, true};
        if (!open.empty()) {
            const CheckedElement& parent = elements_[open.back()];
            element.parent = open.back();
            element.isWalked = parent.isWalked && !isContainerOfDefinitions(parent.node->element());
        }
        elements_.push_back(element);
        open.push_back(number);
    }
}

void CheckedDocument::add(CheckReport& report, FindingKind kind, const FindingRule& rule, uint32_t element,
                          QStringView attribute, const QString& text) const {
    if (report.findings.size() == CheckReport::kMostFindings) {
        ++report.leftOutOfList;
        return;
    }
    Finding finding;
    finding.kind = kind;
    finding.rule = &rule;
    finding.element = elements_[element].node->name();
    finding.attribute = attribute.toString();
    finding.id = elements_[element].node->attribute(tzsvg::Attribute::kId).toString();
    finding.text = text;
    if (isPaired_) {
        finding.line = source_.element(element).line();
        finding.column = source_.element(element).column();
    }
    report.findings.push_back(finding);
}

void CheckedDocument::add(CheckReport& report, FindingKind kind, const FindingRule& rule,
                          const QString& text) {
    Finding finding;
    finding.kind = kind;
    finding.rule = &rule;
    finding.text = text;
    report.findings.push_back(finding);
}

}  // namespace tznormalize
