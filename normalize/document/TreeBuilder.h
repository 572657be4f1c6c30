// Builds the tree of a document from the tokens of an XML reader: the plain one, or Qt's. Used by
// SourceDocument.
#pragma once

#include <QHash>
#include <QString>
#include <QXmlStreamReader>
#include <deque>
#include <vector>

#include "normalize/document/NamespaceScopes.h"
#include "normalize/document/SourceDocument.h"
#include "normalize/document/TagPlaces.h"
#include "normalize/document/TextArena.h"

namespace tznormalize {

struct SourceDocument::Storage {
    QString text;  // of a plain document, whose attributes are views into it
    std::deque<SourceElement> elements;
    std::deque<AttributeName> names;
    Arena<SourceAttribute> attributes;
    TextArena texts;
    size_t textSize = 0;
    bool linksStyleSheet = false;
    std::vector<Namespace> namespaces;
    QHash<QStringView, const SourceElement*> byId;
};

class TreeBuilder {
  public:
    // `places` are those of the reader's text.
    TreeBuilder(SourceDocument::Storage& storage, TagPlaces& places) : storage_(storage), places_(places) {}

    // Reads to the end of the document. The reader stands at the start tag of the root, and does not look
    // after namespaces: drawings often use prefixes that they do not declare, which renderers forgive.
    template <class Reader>
    Reason build(Reader& reader);

  private:
    // An element whose end has not come.
    struct Open {
        SourceElement* element;
        SourceElement* lastChild;
        bool keepsText;
    };

    struct ElementName {
        Tag tag;
        QStringView localName;
    };

    template <class Reader>
    void startElement(const Reader& reader);
    void endElement();
    void flushText();
    QStringView keep(QStringView text);
    template <class Attributes>
    void readAttributes(SourceElement& element, const Attributes& attributes);
    ElementName elementName(QStringView qualifiedName);
    const AttributeName* attributeName(QStringView qualifiedName);
    const AttributeName* makeName(QStringView namespaceUri, QStringView prefix, QStringView localName);
    std::string prefixFor(QStringView namespaceUri, QStringView prefix);

    SourceDocument::Storage& storage_;
    TagPlaces& places_;
    std::vector<Open> open_;
    NamespaceScopes scopes_;
    bool hasNamespace_ = true;  // the root has one

    // What qualified names mean in the scope that holds.
    QHash<QStringView, ElementName> elementNames_;
    QHash<QStringView, const AttributeName*> attributeNames_;

    // All names, by namespace and local name.
    QHash<QPair<QStringView, QStringView>, const AttributeName*> names_;

    QString text_;  // since the last tag
};

}  // namespace tznormalize
