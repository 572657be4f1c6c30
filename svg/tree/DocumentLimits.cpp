// Nearly every document is checked by a scan over its characters. The few with an internal subset are read by
// Qt's stream reader as well: their entities and default attributes add elements and attributes that the text
// does not show.
#include "svg/tree/DocumentLimits.h"

#include <QXmlStreamReader>

#include "svg/tree/XmlEntities.h"

namespace tzsvg {
namespace {

// The attributes of a document's elements.
class AttributeCount {
  public:
    // Adds an element with that many; false when a limit is passed.
    bool add(qint64 attributes) {
        if (attributes > kManyAttributes) pairs_ += attributes * attributes;
        return attributes <= kMaxAttributes && pairs_ <= kMaxAttributePairs;
    }

  private:
    qint64 pairs_ = 0;
};

// Reads the text from '<' to '<'. Everything that is not understood counts as an opened element, so that
// broken text is never taken to be shallower than it is.
class MarkupScan {
  public:
    explicit MarkupScan(const QString& text) : text_(text) {}

    DocumentLimit limitPassed() {
        while (true) {
            const auto start = position_;
            position_ = text_.indexOf(u'<', position_);
            if (tooManyReferences(start, position_ < 0 ? text_.size() : position_))
                return DocumentLimit::kExpansion;
            if (position_ < 0) return DocumentLimit::kNone;
            ++position_;
            if (skipPast(u"!--", u"-->") || skipPast(u"![CDATA[", u"]]>") || skipPast(u"?", u"?>")) continue;
            if (startsWith(u"!")) {
                skipDeclaration();
            } else if (startsWith(u"/")) {
                --depth_;
            } else {
                const DocumentLimit passed = scanElement();
                if (passed != DocumentLimit::kNone) return passed;
            }
        }
    }

    // Whether the text declares an internal subset.
    bool sawInternalSubset() const { return sawInternalSubset_; }

  private:
    bool startsWith(QStringView what) const { return QStringView(text_).mid(position_).startsWith(what); }

    // Skips a construct from its opening to just past its end, or to the end of the text.
    bool skipPast(QStringView opening, QStringView end) {
        if (!startsWith(opening)) return false;
        const auto found = text_.indexOf(end, position_ + opening.size());
        position_ = found < 0 ? text_.size() : found + end.size();
        return true;
    }

    // A declaration, quoted texts as wholes: up to its '>', or up to the internal subset of a document type.
    void skipDeclaration() {
        for (QChar quote; position_ < text_.size(); ++position_) {
            const QChar c = text_.at(position_);
            if (!quote.isNull()) {
                if (c == quote) quote = {};
            } else if (c == u'"' || c == u'\'') {
                quote = c;
            } else if (c == u'[') {
                sawInternalSubset_ = true;  // its declarations are scanned as what follows
                return;
            } else if (c == u'>') {
                return;
            }
        }
    }

    DocumentLimit scanElement() {
        const auto start = position_;
        const DocumentLimit passed = scanTag();
        if (passed != DocumentLimit::kNone) return passed;
        return tooManyReferences(start, position_) ? DocumentLimit::kExpansion : DocumentLimit::kNone;
    }

    // An element's tag, attribute values skipped as wholes.
    DocumentLimit scanTag() {
        if (++depth_ > kMaxElementDepth) return DocumentLimit::kDepth;
        int attributes = 0;
        for (; position_ < text_.size(); ++position_) {
            const QChar c = text_.at(position_);
            if (c == u'"' || c == u'\'') {
                ++attributes;
                position_ = text_.indexOf(c, position_ + 1);
                if (position_ < 0) position_ = text_.size();
            } else if (c == u'>') {
                if (text_.at(position_ - 1) == u'/') --depth_;
                break;
            }
        }
        return attributes_.add(attributes) ? DocumentLimit::kNone : DocumentLimit::kAttributes;
    }

    // Whether a stretch refers to more entities of the document than kMaxReferences: Qt's reader expands a
    // text, and a tag, as a whole before anybody can see how long it gets.
    bool tooManyReferences(qsizetype from, qsizetype to) const {
        if (!sawInternalSubset_) return false;
        int references = 0;
        QStringView rest = QStringView(text_).mid(from, to - from);
        for (auto at = rest.indexOf(u'&'); at >= 0; at = rest.indexOf(u'&')) {
            rest = rest.mid(at + 1);
            const bool isCharacter = rest.startsWith(u'#') || xmlEntityAt(rest);
            if (!isCharacter && ++references > kMaxReferences) return true;
        }
        return false;
    }

    const QString& text_;
    decltype(text_.size()) position_ = 0;
    int depth_ = 0;
    AttributeCount attributes_;
    bool sawInternalSubset_ = false;
};

// How many characters the attributes of an element take when they are written out.
qint64 sizeOf(const QXmlStreamAttributes& attributes) {
    qint64 size = 0;
    for (const QXmlStreamAttribute& attribute : attributes) {
        size += attribute.qualifiedName().size() + attribute.value().size() + qint64{4};  // ' ', '=', quotes
    }
    return size;
}

// The same limits by Qt's reader, which expands entities and bounds the expansion of each; and the limit on
// all expansions together: a reference of three characters stands for up to 4,096 of the reader's, a default
// attribute is added to every element.
DocumentLimit limitPassedExpanded(const QString& xml) {
    qint64 room = kMaxAddedText + qint64{kMaxExpansion} * xml.size();
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    AttributeCount count;
    for (int depth = 0; !reader.atEnd() && room >= 0;) {
        switch (reader.readNext()) {
            case QXmlStreamReader::StartElement: {
                const QXmlStreamAttributes attributes = reader.attributes();
                if (++depth > kMaxElementDepth) return DocumentLimit::kDepth;
                if (!count.add(attributes.size())) return DocumentLimit::kAttributes;
                room -= reader.qualifiedName().size() + sizeOf(attributes);
                break;
            }
            case QXmlStreamReader::DTD:
                if (reader.entityDeclarations().size() + reader.notationDeclarations().size() >
                    kMaxDeclarations)
                    return DocumentLimit::kExpansion;
                room -= reader.text().size();
                break;
            case QXmlStreamReader::EndElement:
                --depth;
                room -= reader.qualifiedName().size();
                break;
            default:
                room -= reader.text().size();
                break;
        }
    }
    return room >= 0 ? DocumentLimit::kNone : DocumentLimit::kExpansion;
}

}  // namespace

DocumentLimit limitPassed(const QString& xml) {
    MarkupScan scan(xml);
    const DocumentLimit passed = scan.limitPassed();
    if (passed != DocumentLimit::kNone || !scan.sawInternalSubset()) return passed;
    return limitPassedExpanded(xml);
}

}  // namespace tzsvg
