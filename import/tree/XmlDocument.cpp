// See the header. Read at recognition.
#include "import/tree/XmlDocument.h"

#include <QXmlStreamReader>
#include <algorithm>
#include <memory>

#include "import/text/XmlReader.h"

namespace tzsvg {
namespace {

// What the toolkit calls nodes without a name.
struct FixedNames {
    const XmlName document{QStringLiteral("#document")};
    const XmlName text{QStringLiteral("#text")};
    const XmlName characterData{QStringLiteral("#cdata-section")};
    const XmlName comment{QStringLiteral("#comment")};
};

const FixedNames& fixedNames() {
    static const FixedNames names;
    return names;
}

}  // namespace

XmlDocument::XmlDocument() {
    top_.name_ = &fixedNames().document;
}

bool XmlDocument::read(const QString& xml) {
    clear();
    XmlReader reader(xml);
    if (reader.withinLimits() && build(reader.stream(), reader.text())) return true;
    clear();
    return false;
}

void XmlDocument::clear() noexcept {
    top_ = {};
    top_.name_ = &fixedNames().document;
    prolog_.clear();
    namesByText_ = {};
    names_ = {};
    room_.release();
}

void XmlDocument::dissolve(const XmlNode& element) {
    XmlNode* const parent = element.parent_;
    for (XmlNode* child = element.firstChild_; child; child = child->next_) child->parent_ = parent;
    const bool isEmpty = !element.firstChild_;
    XmlNode* const first = isEmpty ? element.next_ : element.firstChild_;
    XmlNode* const last = isEmpty ? element.previous_ : element.lastChild_;
    if (!isEmpty) {
        element.firstChild_->previous_ = element.previous_;
        element.lastChild_->next_ = element.next_;
    }
    (element.previous_ ? element.previous_->next_ : parent->firstChild_) = first;
    (element.next_ ? element.next_->previous_ : parent->lastChild_) = last;
}

bool XmlDocument::build(QXmlStreamReader& reader, const QString& xml) {
    const FixedNames& fixed = fixedNames();
    XmlNode* parent = &top_;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
            case QXmlStreamReader::StartDocument:
                // The declaration is an instruction for the toolkit. Nobody asks what it says.
                if (!reader.documentVersion().isEmpty())
                    add(*parent, NodeKind::kInstruction, named(u"xml"), reader);
                break;
            case QXmlStreamReader::DTD:
                prolog_ = xml.left(static_cast<int>(reader.characterOffset()));
                break;
            case QXmlStreamReader::StartElement:
                parent = &addElement(*parent, reader);
                break;
            case QXmlStreamReader::EndElement:
                parent = parent->parent_;
                break;
            case QXmlStreamReader::Characters: {
                const QStringView text = reader.text();
                if (reader.isCDATA()) {
                    add(*parent, NodeKind::kCharacterData, fixed.characterData, reader).text_ = keep(text);
                } else if (!reader.isWhitespace() && !text.trimmed().isEmpty()) {
                    add(*parent, NodeKind::kText, fixed.text, reader).text_ = keep(text);
                }
                break;
            }
            case QXmlStreamReader::Comment:
                add(*parent, NodeKind::kComment, fixed.comment, reader).text_ = keep(reader.text());
                break;
            case QXmlStreamReader::ProcessingInstruction:
                add(*parent, NodeKind::kInstruction, named(reader.processingInstructionTarget()), reader)
                    .text_ = keep(reader.processingInstructionData());
                break;
            case QXmlStreamReader::EntityReference:
                add(*parent, NodeKind::kEntityReference, named(reader.name()), reader);
                break;
            default:
                break;
        }
    }
    return !reader.hasError();
}

XmlNode& XmlDocument::add(XmlNode& parent, NodeKind kind, const XmlName& name,
                          const QXmlStreamReader& reader) {
    XmlNode& node = *new (allocate<XmlNode>(1)) XmlNode;
    node.kind_ = kind;
    node.name_ = &name;
    const bool belowSwitch =
        parent.isElement() && (parent.element() == Element::kSwitch || parent.line_ == XmlNode::kNoLine);
    node.line_ = belowSwitch ? XmlNode::kNoLine : static_cast<int>(reader.lineNumber());
    node.parent_ = &parent;
    node.previous_ = parent.lastChild_;
    (parent.lastChild_ ? parent.lastChild_->next_ : parent.firstChild_) = &node;
    parent.lastChild_ = &node;
    return node;
}

XmlNode& XmlDocument::addElement(XmlNode& parent, const QXmlStreamReader& reader) {
    XmlNode& element = add(parent, NodeKind::kElement, named(reader.qualifiedName()), reader);
    const QXmlStreamAttributes attributes = reader.attributes();
    auto* const kept = allocate<XmlAttribute>(static_cast<size_t>(attributes.size()));
    auto* next = kept;
    for (const QXmlStreamAttribute& attribute : attributes) {
        const XmlName& name = named(attribute.qualifiedName());
        new (next++) XmlAttribute{&name, keep(attribute.value())};
        element.known_ |= XmlNode::bitOf(name.attribute);
    }
    element.attributes_ = kept;
    element.attributeCount_ = static_cast<uint32_t>(attributes.size());
    return element;
}

const XmlName& XmlDocument::named(QStringView text) {
    const auto found = namesByText_.constFind(text);
    if (found != namesByText_.constEnd()) return **found;
    const XmlName& name =
        names_.emplace_back(XmlName{text.toString(), elementNamed(text), attributeNamed(text)});
    namesByText_.insert(name.text, &name);
    return name;
}

QStringView XmlDocument::keep(QStringView text) {
    auto* const kept = allocate<char16_t>(static_cast<size_t>(text.size()) + 1);
    std::copy(text.utf16(), text.utf16() + text.size(), kept);
    return {kept, text.size()};
}

}  // namespace tzsvg
