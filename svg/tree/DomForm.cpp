// See the header.
#include "svg/tree/DomForm.h"

#include "svg/tree/XmlNode.h"
#include "svg/tree/XmlReader.h"

namespace tzsvg {

bool parseXml(const QString& xml, QDomDocument& document) {
    XmlReader reader(xml);
    // The reader is given, not left to the tree: Qt 5 would take an older one, which reads character
    // references beyond U+FFFF wrongly and differs on what is well-formed.
    return reader.withinLimits() && document.setContent(&reader.stream(), false);
}

void DomForms::save(QTextStream& stream, const XmlNode& node) {
    // The toolkit keeps quotes in a text as they are when it is in an element.
    QDomElement siblings = document_.createElement(QStringLiteral("siblings"));
    const QDomNode form = siblings.appendChild(whole(node));
    // The toolkit ends no line before a text.
    if (node.nextSibling() && node.nextSibling()->isText())
        siblings.appendChild(document_.createTextNode(QString()));
    form.save(stream, 0);
}

QDomElement DomForms::alone(const XmlNode& element) {
    QDomElement form = document_.createElement(element.name());
    for (const XmlAttribute& attribute : element) {
        form.setAttribute(attribute.name->text, attribute.value.toString());
    }
    return form;
}

// Recursive, as the toolkit's saving is: no document is nested deeply.
QDomNode DomForms::whole(const XmlNode& node) {
    switch (node.kind()) {
        case NodeKind::kDocument:
            break;
        case NodeKind::kElement: {
            QDomElement form = alone(node);
            for (const XmlNode* child = node.firstChild(); child; child = child->nextSibling()) {
                form.appendChild(whole(*child));
            }
            return form;
        }
        case NodeKind::kText:
            return document_.createTextNode(node.text().toString());
        case NodeKind::kCharacterData:
            return document_.createCDATASection(node.text().toString());
        case NodeKind::kComment:
            return document_.createComment(node.text().toString());
        case NodeKind::kInstruction:
            return document_.createProcessingInstruction(node.name(), node.text().toString());
        case NodeKind::kEntityReference:
            return document_.createEntityReference(node.name());
    }
    return {};
}

}  // namespace tzsvg
