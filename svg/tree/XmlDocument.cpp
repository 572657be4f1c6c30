#include "svg/tree/XmlDocument.h"

#include <QXmlStreamReader>
#include <algorithm>
#include <memory>
#include <type_traits>

#include "svg/tree/PlainXmlReader.h"
#include "svg/tree/XmlReader.h"

namespace tzsvg {
namespace {

// The names that Qt's tree has for nodes without one. They appear in the log.
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
    PlainXmlReader plain(xml);
    if (build(plain, xml)) return true;
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

template <class Reader>
bool XmlDocument::build(Reader& reader, const QString& xml) {
    const FixedNames& fixed = fixedNames();
    XmlNode* parent = &top_;
    const auto addLeaf = [&](NodeKind kind, const XmlName& name) -> XmlNode& {
        return add(*parent, kind, name, reader.lineNumber());
    };
    while (!reader.atEnd()) {
        switch (const QXmlStreamReader::TokenType token = reader.readNext()) {
            case QXmlStreamReader::StartDocument:
                // To Qt's tree the XML declaration is a processing instruction. What it says is never asked.
                if (!reader.documentVersion().isEmpty()) addLeaf(NodeKind::kInstruction, named(u"xml"));
                break;
            case QXmlStreamReader::DTD:
                if (!prolog_.isEmpty()) return false;  // a second one, which Qt's tree refuses
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
                    addLeaf(NodeKind::kCharacterData, fixed.characterData).text_ = keep(text);
                } else if (!reader.isWhitespace() && !text.trimmed().isEmpty()) {
                    addLeaf(NodeKind::kText, fixed.text).text_ = keep(text);
                }
                break;
            }
            case QXmlStreamReader::Comment:
                addLeaf(NodeKind::kComment, fixed.comment).text_ = keep(reader.text());
                break;
            default:
                if constexpr (std::is_same_v<Reader,
                                             QXmlStreamReader>) {  // a PlainXmlReader reports no others
                    if (token == QXmlStreamReader::ProcessingInstruction) {
                        addLeaf(NodeKind::kInstruction, named(reader.processingInstructionTarget())).text_ =
                            keep(reader.processingInstructionData());
                    } else if (token == QXmlStreamReader::EntityReference) {
                        addLeaf(NodeKind::kEntityReference, named(reader.name()));
                    }
                }
                break;
        }
    }
    return !reader.hasError();
}

XmlNode& XmlDocument::add(XmlNode& parent, NodeKind kind, const XmlName& name, qint64 line) {
    XmlNode& node = *new (allocate<XmlNode>(1)) XmlNode;
    node.kind_ = kind;
    node.name_ = &name;
    const bool belowSwitch =
        parent.isElement() && (parent.element() == Element::kSwitch || parent.line_ == XmlNode::kNoLine);
    node.line_ = belowSwitch ? XmlNode::kNoLine : static_cast<int>(line);
    node.parent_ = &parent;
    node.previous_ = parent.lastChild_;
    (parent.lastChild_ ? parent.lastChild_->next_ : parent.firstChild_) = &node;
    parent.lastChild_ = &node;
    return node;
}

template <class Reader>
XmlNode& XmlDocument::addElement(XmlNode& parent, const Reader& reader) {
    XmlNode& element = add(parent, NodeKind::kElement, named(reader.qualifiedName()), reader.lineNumber());
    const auto& attributes = reader.attributes();
    auto* const kept = allocate<XmlAttribute>(static_cast<size_t>(attributes.size()));
    auto* next = kept;
    for (const auto& attribute : attributes) {
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
