// One node of a document. Made and owned by XmlDocument; everybody else only reads it.
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>

#include "svg/tree/KnownNames.h"

namespace tzsvg {

enum class NodeKind : uint8_t {
    kDocument,
    kElement,
    kText,
    kCharacterData,
    kComment,
    kInstruction,
    kEntityReference,
};

// A name as it stands in the document, with its prefix. Equal names of a document are one object.
struct XmlName {
    QString text;
    Element element = Element::kOther;
    Attribute attribute = Attribute::kOther;
};

struct XmlAttribute {
    const XmlName* name;
    QStringView value;
};

class XmlNode {
  public:
    // A node without a line of its own.
    static constexpr int kNoLine = -1;

    NodeKind kind() const { return kind_; }
    bool isElement() const { return kind_ == NodeKind::kElement; }
    bool isText() const { return kind_ == NodeKind::kText || kind_ == NodeKind::kCharacterData; }

    // An element's name, an instruction's target, an entity's name; of the others one that no element has, as
    // in "#text".
    const QString& name() const { return name_->text; }

    // Which element it is; kOther for other nodes.
    Element element() const { return isElement() ? name_->element : Element::kOther; }
    bool isShape() const { return tzsvg::isShape(element()); }

    // What a text, a comment or an instruction says.
    QStringView text() const { return text_; }

    // The line on which the reader was when it had read the node; kNoLine below a "switch": to the log, what
    // comes out of one is a copy, which has no line.
    int line() const { return line_; }

    const XmlNode* parent() const { return parent_; }
    const XmlNode* firstChild() const { return firstChild_; }
    const XmlNode* lastChild() const { return lastChild_; }
    const XmlNode* nextSibling() const { return next_; }

    // The node after this one in document order, of those below `top`; null behind the last.
    const XmlNode* nextBelow(const XmlNode& top) const {
        const XmlNode* node = this;
        if (node->firstChild_) return node->firstChild_;
        while (node != &top && !node->next_) node = node->parent_;
        return node == &top ? nullptr : node->next_;
    }

    // In the order of the document.
    const XmlAttribute* begin() const { return attributes_; }
    const XmlAttribute* end() const { return attributes_ + attributeCount_; }

    bool has(Attribute attribute) const { return (known_ & bitOf(attribute)) != 0; }
    // Empty when it is absent. Valid as long as the document.
    QStringView attribute(Attribute attribute) const {
        if (!has(attribute)) return {};
        const XmlAttribute* found = begin();
        while (found->name->attribute != attribute) ++found;
        return found->value;
    }

  private:
    friend class XmlDocument;

    static uint32_t bitOf(Attribute attribute) {
        return attribute == Attribute::kOther ? 0 : 1U << static_cast<unsigned>(attribute);
    }

    const XmlName* name_ = nullptr;
    XmlNode* parent_ = nullptr;
    XmlNode* previous_ = nullptr;
    XmlNode* next_ = nullptr;
    XmlNode* firstChild_ = nullptr;
    XmlNode* lastChild_ = nullptr;
    const XmlAttribute* attributes_ = nullptr;
    QStringView text_;
    uint32_t attributeCount_ = 0;
    uint32_t known_ = 0;  // which of the attributes that have a code it has, a bit each
    int line_ = kNoLine;
    NodeKind kind_ = NodeKind::kDocument;
};

}  // namespace tzsvg
