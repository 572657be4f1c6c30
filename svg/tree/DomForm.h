// The toolkit's own tree, whose text form is the one in which everything is kept: made of the nodes that a
// capture keeps, and of the fragments that the saver reads back.
#pragma once

#include <QDomDocument>
#include <QString>
#include <QTextStream>

namespace tzsvg {

class XmlNode;

// Parses a text without namespaces: names keep their prefixes, declarations are attributes. False, and the
// document is empty or what the parser left, when the text is beyond the limits or not well-formed.
bool parseXml(const QString& xml, QDomDocument& document);

// Makes the toolkit's form of nodes of an imported document. What it made must not outlive it.
class DomForms {
  public:
    // Writes a node and all that is below it, as QDomNode::save does at indent 0.
    void save(QTextStream& stream, const XmlNode& node);

    // An element with its attributes, without what is below it.
    QDomElement alone(const XmlNode& element);

  private:
    QDomNode whole(const XmlNode& node);

    QDomDocument document_;
};

}  // namespace tzsvg
