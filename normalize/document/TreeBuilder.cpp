#include "normalize/document/TreeBuilder.h"

#include <algorithm>

namespace tznormalize {
namespace {

struct QualifiedName {
    QStringView prefix;  // empty when there is none
    QStringView localName;
};

QualifiedName split(QStringView name) {
    const auto colon = name.indexOf(u':');
    if (colon <= 0) return {u"", name};
    return {name.left(colon), name.mid(colon + 1)};
}

// Whether the text of an element counts.
bool keepsText(Tag tag) {
    return tag == Tag::kText || tag == Tag::kStyle || tag == Tag::kTitle || tag == Tag::kDesc ||
           tag == Tag::kFlowRoot;
}

}  // namespace

template <class Reader>
Reason TreeBuilder::build(Reader& reader) {
    startElement(reader);
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
            case QXmlStreamReader::StartElement:
                if (storage_.elements.size() >= SourceDocument::kMaxElements)
                    return {Refusal::kTooManyElements,
                            QStringLiteral("it has more than %1 elements").arg(SourceDocument::kMaxElements)};
                startElement(reader);
                break;
            case QXmlStreamReader::EndElement:
                endElement();
                break;
            case QXmlStreamReader::Characters:
                if (!open_.empty() && open_.back().keepsText) text_ += reader.text();
                break;
            default:
                break;
        }
    }
    return {};
}
template Reason TreeBuilder::build(QXmlStreamReader& reader);
template Reason TreeBuilder::build(tzsvg::PlainXmlReader& reader);

template <class Reader>
void TreeBuilder::startElement(const Reader& reader) {
    flushText();
    places_.moveTo(reader);
    const auto& attributes = reader.attributes();
    SourceElement& element = storage_.elements.emplace_back();
    element.index_ = uint32_t(storage_.elements.size() - 1);
    element.line_ = uint32_t(places_.line());
    element.column_ = uint32_t(places_.column());
    bool declares = false;
    for (const auto& one : attributes) {
        const QStringView name = one.qualifiedName();
        if (!name.startsWith(u"xmlns") || (name.size() > 5 && name[5] != u':')) continue;
        scopes_.declare(open_.size(), keep(name.size() > 6 ? name.mid(6) : QStringView()), keep(one.value()));
        declares = true;
    }
    if (declares) {
        elementNames_.clear();
        attributeNames_.clear();
    }
    const QStringView qualifiedName = reader.qualifiedName();
    if (open_.empty()) hasNamespace_ = !scopes_.uriOf(split(qualifiedName).prefix).isEmpty();
    const ElementName name = elementName(qualifiedName);
    element.tag_ = name.tag;
    element.localName_ = name.localName;
    readAttributes(element, attributes);
    Open entry{&element, nullptr, keepsText(element.tag_)};
    if (!open_.empty()) {
        Open& parent = open_.back();
        element.parent_ = parent.element;
        (parent.lastChild ? parent.lastChild->nextSibling_ : parent.element->firstChild_) = &element;
        parent.lastChild = &element;
        entry.keepsText |= parent.keepsText;
    }
    open_.push_back(entry);
}

void TreeBuilder::endElement() {
    flushText();
    open_.pop_back();
    if (scopes_.close(open_.size())) {
        elementNames_.clear();
        attributeNames_.clear();
    }
}

// Text belongs to the element that it follows: the one whose end tag came last, or the one that is open.
void TreeBuilder::flushText() {
    if (text_.isEmpty()) return;
    const Open& around = open_.back();
    (around.lastChild ? around.lastChild->tail_ : around.element->text_) = storage_.texts.keep(text_);
    text_.clear();
}

// The text itself where it stands in the document's, else a copy.
QStringView TreeBuilder::keep(QStringView text) {
    const QStringView whole = storage_.text;
    const bool isPart = text.utf16() >= whole.utf16() && text.utf16() < whole.utf16() + whole.size();
    return isPart ? text : storage_.texts.keep(text);
}

template <class Attributes>
void TreeBuilder::readAttributes(SourceElement& element, const Attributes& attributes) {
    SourceAttribute* const kept = storage_.attributes.make(size_t(attributes.size()));
    uint16_t count = 0;
    for (const auto& one : attributes) {
        const QStringView text = one.qualifiedName();
        const AttributeName* const name = attributeName(text);
        if (!name) continue;
        kept[count++] = {name, keep(one.value())};
        if (name->name == Name::kId) element.id_ = kept[count - 1].value.trimmed();
    }
    element.attributes_ = kept;
    element.attributeCount_ = count;
    if (!element.id_.isEmpty() && !storage_.byId.contains(element.id_))
        storage_.byId.insert(element.id_, &element);
}

TreeBuilder::ElementName TreeBuilder::elementName(QStringView qualifiedName) {
    const auto known = elementNames_.constFind(qualifiedName);
    if (known != elementNames_.constEnd()) return *known;
    const QStringView kept = storage_.texts.keep(qualifiedName);
    const QualifiedName name = split(kept);
    const QStringView uri = scopes_.uriOf(name.prefix);
    const bool isSvg = uri == kSvgNamespace || (uri.isEmpty() && !hasNamespace_);
    const ElementName made{isSvg ? tagOf(name.localName) : Tag::kForeign, name.localName};
    elementNames_.insert(kept, made);
    return made;
}

// Null for names that mean nothing: declarations, and prefixes that nobody has declared.
const AttributeName* TreeBuilder::attributeName(QStringView qualifiedName) {
    const auto known = attributeNames_.constFind(qualifiedName);
    if (known != attributeNames_.constEnd()) return *known;
    const QStringView kept = storage_.texts.keep(qualifiedName);
    const QualifiedName name = split(kept);
    const AttributeName* made = nullptr;
    if (kept != u"xmlns" && name.prefix != u"xmlns") {
        const QStringView uri = name.prefix.isEmpty() ? QStringView(u"") : scopes_.uriOf(name.prefix);
        if (!uri.isNull()) made = makeName(uri, name.prefix, name.localName);
    }
    attributeNames_.insert(kept, made);
    return made;
}

const AttributeName* TreeBuilder::makeName(QStringView namespaceUri, QStringView prefix,
                                           QStringView localName) {
    const AttributeName*& known = names_[{namespaceUri, localName}];
    if (known) return known;
    AttributeName& made = storage_.names.emplace_back();
    made.namespaceUri = namespaceUri;
    made.localName = localName;
    made.written = localName.toUtf8().toStdString();
    if (namespaceUri.isEmpty()) {
        made.name = nameOf(localName);
    } else {
        made.written = prefixFor(namespaceUri, prefix) + ":" + made.written;
        if (namespaceUri == kXlinkNamespace || namespaceUri == kXmlNamespace)
            made.name = nameOf(QString::fromStdString(made.written));
    }
    known = &made;
    return known;
}

// One for each namespace: that under which the document has it first, unless another one has it already.
std::string TreeBuilder::prefixFor(QStringView namespaceUri, QStringView prefix) {
    if (namespaceUri == kXmlNamespace) return "xml";
    const std::string uri = namespaceUri.toUtf8().toStdString();
    std::vector<Namespace>& all = storage_.namespaces;
    for (const Namespace& one : all) {
        if (one.uri == uri) return one.prefix;
    }
    const std::string stem =
        namespaceUri == kXlinkNamespace ? std::string("xlink") : prefix.toUtf8().toStdString();
    std::string wanted = stem;
    const auto isTaken = [&] {
        return std::any_of(all.begin(), all.end(),
                           [&](const Namespace& one) { return one.prefix == wanted; });
    };
    for (int i = 2; isTaken() || (wanted == "xlink" && namespaceUri != kXlinkNamespace); ++i)
        wanted = stem + std::to_string(i);
    all.push_back({wanted, uri});
    return wanted;
}

}  // namespace tznormalize
