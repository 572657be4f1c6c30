#include "normalize/document/SourceDocument.h"

#include <QXmlStreamReader>

#include "normalize/document/DocumentBytes.h"
#include "normalize/document/TreeBuilder.h"
#include "svg/tree/DocumentLimits.h"

namespace tznormalize {
namespace {

// Why the reader stopped. What has no svg element before the fault is no drawing at all.
Reason reasonOf(const QXmlStreamReader& reader, const QString& text) {
    const bool looksLikeSvg = text.contains(QLatin1String("<svg")) || text.contains(QLatin1String(":svg"));
    Reason reason{Refusal::kNotWellFormed,
                  QStringLiteral("not well-formed: ") + reader.errorString().simplified(),
                  reader.lineNumber(), reader.columnNumber()};
    if (text.trimmed().isEmpty())
        reason = {Refusal::kNotSvg, QStringLiteral("no SVG: it is empty")};
    else if (!looksLikeSvg)
        reason = {Refusal::kNotSvg, QStringLiteral("no SVG: it has no svg element")};
    return reason;
}

Reason limitReason(const QString& text) {
    switch (tzsvg::limitPassed(text)) {
        case tzsvg::DocumentLimit::kNone:
            return {};
        case tzsvg::DocumentLimit::kDepth:
            return {
                Refusal::kTooDeep,
                QStringLiteral("its elements are nested deeper than %1 levels").arg(tzsvg::kMaxElementDepth)};
        case tzsvg::DocumentLimit::kAttributes:
            return {Refusal::kTooLarge,
                    QStringLiteral("an element has more than %1 attributes").arg(tzsvg::kMaxAttributes)};
        case tzsvg::DocumentLimit::kExpansion:
            break;
    }
    return {Refusal::kTooLarge, QStringLiteral("its entities expand to too much text")};
}

bool isSvgName(QStringView qualifiedName) {
    return qualifiedName == u"svg" || qualifiedName.endsWith(u":svg");
}

// "#name" leads to a style element of the document itself.
bool asksForStyleSheet(const QXmlStreamReader& reader) {
    if (!reader.isProcessingInstruction()) return false;
    const auto data = reader.processingInstructionData();
    return reader.processingInstructionTarget() == QLatin1String("xml-stylesheet") &&
           !data.contains(QLatin1String("\"#")) && !data.contains(QLatin1String("'#"));
}

// Whether the document was read: it is plain, and nothing refuses it.
bool readPlain(SourceDocument::Storage& storage) {
    tzsvg::PlainXmlReader reader(storage.text, tzsvg::PlainXmlReader::Lines::kMany);
    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::StartElement) {
    }
    if (reader.hasError() || !isSvgName(reader.qualifiedName())) return false;
    TagPlaces places(storage.text);
    Reason refused = TreeBuilder(storage, places).build(reader);
    return !refused && !reader.hasError() && storage.elements.front().tag() == Tag::kSvg;
}

}  // namespace

QStringView SourceElement::href() const {
    const QStringView plain = attribute(Name::kHref);
    return (plain.isNull() ? attribute(Name::kXlinkHref) : plain).trimmed();
}

SourceDocument::SourceDocument() : storage_(std::make_unique<Storage>()) {}
SourceDocument::~SourceDocument() = default;

Reason SourceDocument::read(const QByteArray& bytes) {
    Reason unreadable = textOfBytes(bytes, storage_->text);
    if (unreadable) return unreadable;
    const auto size = size_t(storage_->text.size());
    if (!readPlain(*storage_)) {
        const QString text = std::move(storage_->text);
        storage_ = std::make_unique<Storage>();
        Reason refused = readByQt(text);
        if (refused) return refused;
    }
    storage_->textSize = size;
    return {};
}

Reason SourceDocument::readByQt(const QString& text) {
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd() && !reader.isStartElement()) {
        reader.readNext();
        storage_->linksStyleSheet |= asksForStyleSheet(reader);
    }
    if (reader.hasError()) return reasonOf(reader, text);
    TagPlaces places(text);
    places.moveTo(reader);
    const qint64 line = places.line();
    const qint64 column = places.column();
    if (!isSvgName(reader.qualifiedName())) {
        return {Refusal::kNotSvg,
                QStringLiteral("no SVG: its root is the element \"%1\"").arg(reader.qualifiedName()), line,
                column};
    }
    Reason limited = limitReason(text);
    if (limited) return limited;
    Reason refused = TreeBuilder(*storage_, places).build(reader);
    if (refused) return refused;
    if (reader.hasError()) return reasonOf(reader, text);
    if (root().tag() != Tag::kSvg) {
        return {Refusal::kNotSvg, QStringLiteral("no SVG: its root is of another namespace"), line, column};
    }
    return {};
}

const SourceElement& SourceDocument::root() const {
    return storage_->elements.front();
}

size_t SourceDocument::textSize() const {
    return storage_->textSize;
}

size_t SourceDocument::elementCount() const {
    return storage_->elements.size();
}

const SourceElement& SourceDocument::element(uint32_t index) const {
    return storage_->elements[index];
}

const SourceElement* SourceDocument::byId(QStringView id) const {
    return storage_->byId.value(id);
}

const SourceElement* SourceDocument::target(const SourceElement& element) const {
    const QStringView link = element.href();
    return link.startsWith(u'#') ? byId(link.mid(1)) : nullptr;
}

bool SourceDocument::linksStyleSheet() const {
    return storage_->linksStyleSheet;
}

const std::vector<Namespace>& SourceDocument::namespaces() const {
    return storage_->namespaces;
}

}  // namespace tznormalize
