// The elements of a drawing as it was read. Nobody changes them after reading; views and pointers live as
// long as their SourceDocument.
#pragma once

#include <QStringView>
#include <cstdint>
#include <string>

#include "normalize/document/Names.h"

namespace tznormalize {

// An attribute's name, one object for all attributes of a document that have it.
struct AttributeName {
    Name name = Name::kOther;
    QStringView namespaceUri;  // empty for plain attributes
    QStringView localName;

    // As it is to be written, in UTF-8: foreign names with a prefix that stands for their namespace and for
    // no other in the whole document ("inkscape:label"). DocumentWriter declares those that are used.
    std::string written;
};

struct SourceAttribute {
    const AttributeName* name = nullptr;
    QStringView value;
};

class SourceElement {
  public:
    Tag tag() const { return tag_; }
    QStringView localName() const { return localName_; }

    // Without the blanks around it; empty when there is none.
    QStringView id() const { return id_; }

    const SourceElement* parent() const { return parent_; }
    const SourceElement* firstChild() const { return firstChild_; }
    const SourceElement* nextSibling() const { return nextSibling_; }

    // Mixed content: the text between the start tag and the first child, and the text between the end tag and
    // the next sibling. Entities are resolved, comments do not count. Kept inside of text, style, title, desc
    // and flowRoot elements only.
    QStringView text() const { return text_; }
    QStringView tail() const { return tail_; }

    // A null view (isNull()) when there is none of the name, which is not kOther.
    QStringView attribute(Name name) const {
        for (const SourceAttribute& one : *this) {
            if (one.name->name == name) return one.value;
        }
        return {};
    }
    bool has(Name name) const { return !attribute(name).isNull(); }

    // The reference without the blanks around it, "#id" or to a file: `href`, else that of XLink. Null when
    // there is none.
    QStringView href() const;

    // All attributes, namespace declarations left out: `for (const SourceAttribute& one : element)`.
    const SourceAttribute* begin() const { return attributes_; }
    const SourceAttribute* end() const { return attributes_ + attributeCount_; }

    // Where its "<" stands in the document, counted from 1.
    qint64 line() const { return line_; }
    qint64 column() const { return column_; }

    // The place in document order, from 0 for the root: a key for caches, and for marks of what is visited.
    uint32_t index() const { return index_; }

  private:
    friend class TreeBuilder;

    Tag tag_ = Tag::kOther;
    uint16_t attributeCount_ = 0;
    uint32_t index_ = 0;
    uint32_t line_ = 0;
    uint32_t column_ = 0;
    const SourceAttribute* attributes_ = nullptr;
    const SourceElement* parent_ = nullptr;
    const SourceElement* firstChild_ = nullptr;
    const SourceElement* nextSibling_ = nullptr;
    QStringView localName_;
    QStringView id_;
    QStringView text_;
    QStringView tail_;
};

}  // namespace tznormalize
