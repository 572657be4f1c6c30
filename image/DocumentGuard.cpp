// First the streaming look at the bare text, which bounds what everything after it costs;
// then the elements, by Qt's own reader on the same bytes, so that no trick of encoding, entity or
// default attribute shows the renderer another document than the one looked at.
#include "image/DocumentGuard.h"

#include <QFileInfo>
#include <QXmlStreamReader>
#include <vector>

#include "image/LinkedFiles.h"
#include "image/StyleCost.h"
#include "image/UseExpansion.h"
#include "svg/tree/DocumentLimits.h"
#include "svg/tree/DocumentText.h"
#include "svg/tree/GzipText.h"

namespace tzsvg {
namespace {

// Hands the value of every attribute of that name to `use`, whatever its prefix: which of "href" and
// "xlink:href" a renderer prefers depends on its version.
template <class Use>
void forEachAttribute(const QXmlStreamReader& reader, QLatin1String name, Use&& use) {
    const QXmlStreamAttributes attributes = reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes) {
        if (attribute.name() == name) use(attribute.value().toString());
    }
}

// Reads a document up to the end of its root, where the renderer stops too, and hands every token to `look`.
// False when `look` refuses one, or when the text is not well-formed up to there.
template <class Look>
bool readTokens(const QByteArray& xml, Look&& look) {
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    int depth = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && ++depth > kMaxElementDepth) return false;
        if (!look(token, reader)) return false;
        if (token == QXmlStreamReader::EndElement && --depth == 0) return true;
    }
    return false;
}

// One look at a document: what links, styles and uses it has.
class Inspection {
  public:
    explicit Inspection(LinkedFiles& links) : links_(links) {}

    bool accept(QXmlStreamReader::TokenType token, const QXmlStreamReader& reader) {
        switch (token) {
            case QXmlStreamReader::StartElement:
                return acceptElement(reader);
            case QXmlStreamReader::EndElement:
                inStyle_ = inStyle_ && reader.name() != QLatin1String("style");
                open_.pop_back();
                return true;
            case QXmlStreamReader::Characters:
                if (inStyle_) styles_.addSheet(reader.text());
                return true;
            case QXmlStreamReader::ProcessingInstruction:
                return reader.processingInstructionTarget() != QLatin1String("xml-stylesheet") ||
                       links_.acceptStyleSheet(reader.processingInstructionData().toString(), styles_);
            default:
                return true;
        }
    }

    bool stylesWithinLimits() const { return styles_.withinLimits(); }
    bool sawUse() const { return sawUse_; }

  private:
    bool acceptElement(const QXmlStreamReader& reader) {
        styles_.addElement(static_cast<int64_t>(open_.size()), open_.empty() ? 0 : open_.back()++);
        open_.push_back(0);
        const auto name = reader.name();
        inStyle_ = inStyle_ || name == QLatin1String("style");
        sawUse_ = sawUse_ || name == QLatin1String("use");
        // A gradient takes all stops up to the next gradient, wherever they stand.
        if (name == QLatin1String("linearGradient") || name == QLatin1String("radialGradient")) stops_ = 0;
        bool accepted = name != QLatin1String("stop") || ++stops_ <= kMaxGradientStops;
        if (name == QLatin1String("image")) {
            forEachAttribute(reader, QLatin1String("href"),
                             [&](const QString& href) { accepted = accepted && links_.acceptImage(href); });
        }
        return accepted;
    }

    LinkedFiles& links_;
    StyleCost styles_;
    std::vector<int64_t> open_;  // the elements that have not ended: how many children of each have begun
    int stops_ = 0;              // of the present gradient
    bool inStyle_ = false;
    bool sawUse_ = false;
};

// A second reading, for the few documents with uses: IDs are kept for these alone.
bool usesWithinLimits(const QByteArray& xml) {
    UseExpansion uses;
    const bool read = readTokens(xml, [&](QXmlStreamReader::TokenType token, const QXmlStreamReader& reader) {
        if (token == QXmlStreamReader::StartElement) {
            uses.begin();
            forEachAttribute(reader, QLatin1String("id"), [&](const QString& id) { uses.claim(id); });
            if (reader.name() == QLatin1String("use")) {
                forEachAttribute(reader, QLatin1String("href"),
                                 [&](const QString& href) { uses.use(href.trimmed().mid(1)); });
            }
        } else if (token == QXmlStreamReader::EndElement) {
            uses.end();
        }
        return true;
    });
    return read && uses.withinLimits();
}

bool isSafe(const QByteArray& xml, LinkedFiles& links) {
    if (!withinLimits(decodeDocument(xml))) return false;
    Inspection inspection(links);
    const bool accepted =
        readTokens(xml, [&](QXmlStreamReader::TokenType token, const QXmlStreamReader& reader) {
            return inspection.accept(token, reader);
        });
    return accepted && inspection.stylesWithinLimits() && (!inspection.sawUse() || usesWithinLimits(xml));
}

}  // namespace

std::optional<QByteArray> documentText(const QString& fileName) {
    if (!QFileInfo(fileName).isFile()) return std::nullopt;  // a pipe would be waited for
    QByteArray bytes;
    if (!readFileBytes(fileName, bytes)) return std::nullopt;
    return isCompressedName(fileName) ? unpackGzip(bytes, kMaxUnpackedBytes) : bytes;
}

std::optional<SafeDocument> inspectDocument(const QString& fileName) {
    const std::optional<QByteArray> xml = documentText(fileName);
    if (!xml) return std::nullopt;
    SafeDocument document;
    const bool compressed = isCompressedName(fileName);
    if (compressed) document.bytes = *xml;
    LinkedFiles links(fileName, compressed);
    if (!isSafe(*xml, links)) return std::nullopt;
    document.linkedFiles = links.files();
    return document;
}

}  // namespace tzsvg
