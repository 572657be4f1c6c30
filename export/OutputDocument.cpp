// Line ends follow the rules of svg/tree/SavedForm.cpp.
#include "export/OutputDocument.h"

#include "export/ElementBuilder.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {
namespace {

bool isText(const OutputNode& node) {
    const auto* const stored = std::get_if<StoredNode>(&node);
    return stored && stored->isText;
}

bool endsLine(const OutputNode& node) {
    const auto* const stored = std::get_if<StoredNode>(&node);
    return !stored || stored->endsLine;
}

void append(std::string& text, const QByteArray& bytes) {
    text.append(bytes.constData(), static_cast<size_t>(bytes.size()));
}

}  // namespace

void OutputElement::addComment(const QString& comment) {
    QString text;
    saveComment(text, comment);
    children_.emplace_back(StoredNode{text.toUtf8(), false, true});
}

void OutputElement::addChildrenOf(const XmlNode& node) {
    for (const XmlNode* child = node.firstChild(); child; child = child->nextSibling()) {
        QString text;
        saveNode(text, *child);
        const bool endsLine = child->isElement() || child->kind() == NodeKind::kComment;
        if (endsLine && text.endsWith(u'\n')) text.chop(1);
        children_.emplace_back(StoredNode{text.toUtf8(), child->isText(), endsLine});
    }
}

ElementText OutputDocument::addPolygon(ElementBuilder& element) {
    constexpr size_t kChunkSize = size_t{1} << 20U;
    constexpr size_t kLastElement = kChunkSize / 16;
    if (chunks_.empty() || chunks_.back().size() > kChunkSize - kLastElement) {
        chunks_.emplace_back();
        chunks_.back().reserve(kChunkSize);
    }
    std::string& chunk = chunks_.back();
    const size_t start = chunk.size();
    element.save(chunk);
    size_ += chunk.size() - start + 1;  // and a line end
    return {static_cast<uint32_t>(chunks_.size() - 1), static_cast<uint32_t>(start), chunk.size() - start};
}

std::string OutputDocument::save(const OutputElement& root) const {
    std::string text;
    text.reserve(size_ + size_ / 64);
    saveElement(root, text);
    text += '\n';
    return text;
}

// Recursive: the groups of a document are not nested deeply.
void OutputDocument::saveElement(const OutputElement& element, std::string& text) const {
    QString opening;
    saveTagOpening(opening, element.name(), element.attributes());
    append(text, opening.toUtf8());
    const std::vector<OutputNode>& children = element.children();
    if (children.empty()) {
        text += "/>";
        return;
    }
    text += '>';
    if (!isText(children.front())) text += '\n';
    for (size_t i = 0; i < children.size(); ++i) {
        const OutputNode& node = children[i];
        if (const auto* const polygon = std::get_if<ElementText>(&node)) {
            text.append(chunks_[polygon->chunk], polygon->start, polygon->size);
        } else if (const auto* const stored = std::get_if<StoredNode>(&node)) {
            append(text, stored->text);
        } else {
            saveElement(*std::get<OutputElement*>(node), text);
        }
        const bool isBeforeText = i + 1 < children.size() && isText(children[i + 1]);
        if (endsLine(node) && !isBeforeText) text += '\n';
    }
    text += "</";
    append(text, element.name().toUtf8());
    text += '>';
}

}  // namespace tzsvg
