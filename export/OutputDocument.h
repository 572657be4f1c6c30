// The document being written: elements whose attributes and children are still set and placed, stored nodes
// that come back as text, and polygons, which are text from the start: a million of them do not need a
// million elements. Filled by the steps of the saver; saved once, at the end.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <deque>
#include <string>
#include <variant>
#include <vector>

#include "svg/tree/SavedForm.h"

namespace tzsvg {

class ElementBuilder;
class OutputElement;
class XmlNode;

// A node as saved text, without the line end behind it.
struct StoredNode {
    QByteArray text;
    bool isText;    // no line break may stand beside it
    bool endsLine;  // but where a text follows
};

// Where the saved text of one polygon is, without its line end.
struct ElementText {
    uint32_t chunk;
    uint32_t start;
    size_t size;
};

using OutputNode = std::variant<OutputElement*, StoredNode, ElementText>;

class OutputElement {
  public:
    explicit OutputElement(QString name) : name_(std::move(name)) {}

    const QString& name() const { return name_; }
    SavedAttributes& attributes() { return attributes_; }
    const SavedAttributes& attributes() const { return attributes_; }
    std::vector<OutputNode>& children() { return children_; }
    const std::vector<OutputNode>& children() const { return children_; }

    void addComment(const QString& comment);
    // Appends the children of a node of a document, which need not live on.
    void addChildrenOf(const XmlNode& node);

  private:
    QString name_;
    SavedAttributes attributes_;
    std::vector<OutputNode> children_;
};

class OutputDocument {
  public:
    // An element that lives as long as the document, and is part of it when it is somebody's child.
    OutputElement& makeElement(const QString& name) { return elements_.emplace_back(name); }

    // Saves the element of a polygon.
    ElementText addPolygon(ElementBuilder& element);

    // The root and all below it as text, in UTF-8, as Qt would save it at indent 0.
    std::string save(const OutputElement& root) const;

  private:
    void saveElement(const OutputElement& element, std::string& text) const;

    std::deque<OutputElement> elements_;
    // In pieces, which stay where they are: one text that grew would be copied, into fresh memory, as often
    // as it doubled.
    std::vector<std::string> chunks_;
    size_t size_ = 0;  // of all
};

}  // namespace tzsvg
