// See the header. Two scans: a bare one over the characters for nearly every document, and the toolkit's own
// stream reader for the few with an internal subset, whose entities and default attributes add elements and
// attributes that the text does not show.
#include "import/text/DocumentLimits.h"

#include <QXmlStreamReader>

namespace tzsvg {
namespace {

// Reads the text from '<' to '<'. Everything that is not understood counts as an opened element, so that
// broken text is never taken to be shallower than it is.
class MarkupScan {
  public:
    explicit MarkupScan(const QString& text) : text_(text) {}

    bool withinLimits() {
        while (true) {
            position_ = text_.indexOf(u'<', position_);
            if (position_ < 0) return true;
            ++position_;
            if (skipPast(u"!--", u"-->") || skipPast(u"![CDATA[", u"]]>") || skipPast(u"?", u"?>")) continue;
            if (startsWith(u"!")) {
                skipDeclaration();
            } else if (startsWith(u"/")) {
                --depth_;
            } else if (!scanElement()) {
                return false;
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

    // An element's tag, attribute values skipped as wholes. False when a limit is passed.
    bool scanElement() {
        if (++depth_ > kMaxElementDepth) return false;
        int attributes = 0;
        for (; position_ < text_.size(); ++position_) {
            const QChar c = text_.at(position_);
            if (c == u'"' || c == u'\'') {
                if (++attributes > kMaxAttributes) return false;
                position_ = text_.indexOf(c, position_ + 1);
                if (position_ < 0) position_ = text_.size();
            } else if (c == u'>') {
                if (text_.at(position_ - 1) == u'/') --depth_;
                return true;
            }
        }
        return true;
    }

    const QString& text_;
    decltype(text_.size()) position_ = 0;
    int depth_ = 0;
    bool sawInternalSubset_ = false;
};

// The same limits by the toolkit's reader, which expands entities and bounds their expansion.
bool expandedWithinLimits(const QString& xml) {
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    for (int depth = 0; !reader.atEnd();) {
        switch (reader.readNext()) {
            case QXmlStreamReader::StartElement:
                if (++depth > kMaxElementDepth || reader.attributes().size() > kMaxAttributes) return false;
                break;
            case QXmlStreamReader::EndElement:
                --depth;
                break;
            default:
                break;
        }
    }
    return true;
}

}  // namespace

bool withinLimits(const QString& xml) {
    MarkupScan scan(xml);
    if (!scan.withinLimits()) return false;
    return !scan.sawInternalSubset() || expandedWithinLimits(xml);
}

}  // namespace tzsvg
