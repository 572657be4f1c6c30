// First the streaming look at the bare text, which bounds what everything after it costs;
// then the elements, by Qt's own reader on the same bytes, so that no trick of encoding, entity or
// default attribute shows the renderer another document than the one looked at.
#include "svg/guard/DocumentGuard.h"

#include <QFileInfo>
#include <QXmlStreamReader>
#include <vector>

#include "svg/guard/LinkedFiles.h"
#include "svg/guard/StyleCost.h"
#include "svg/guard/UseExpansion.h"
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

// Reads a document up to the end of its root, where the renderer stops too, and hands every token to `look`,
// up to the first danger.
template <class Look>
DangerousPlace readTokens(const QByteArray& xml, Look&& look) {
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    int depth = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && ++depth > kMaxElementDepth) break;
        const Danger danger = look(token, reader);
        if (danger != Danger::kNone) return {danger, reader.characterOffset()};
        if (token == QXmlStreamReader::EndElement && --depth == 0) return {};
    }
    return {Danger::kText, reader.characterOffset()};
}

// One look at a document: what links, styles and uses it has.
class Inspection {
  public:
    explicit Inspection(LinkedFiles& links) : links_(links) {}

    Danger inspect(QXmlStreamReader::TokenType token, const QXmlStreamReader& reader) {
        switch (token) {
            case QXmlStreamReader::StartElement:
                return inspectElement(reader);
            case QXmlStreamReader::EndElement:
                inStyle_ = inStyle_ && reader.name() != QLatin1String("style");
                open_.pop_back();
                return Danger::kNone;
            case QXmlStreamReader::Characters:
                if (inStyle_) styles_.addSheet(reader.text());
                return Danger::kNone;
            case QXmlStreamReader::ProcessingInstruction:
                if (reader.processingInstructionTarget() != QLatin1String("xml-stylesheet"))
                    return Danger::kNone;
                return links_.inspectStyleSheet(reader.processingInstructionData().toString(), styles_);
            default:
                return Danger::kNone;
        }
    }

    bool stylesWithinLimits() const { return styles_.withinLimits(); }
    bool sawUse() const { return sawUse_; }
    bool sawTextOrNested() const { return sawTextOrNested_; }

  private:
    Danger inspectElement(const QXmlStreamReader& reader) {
        styles_.addElement(static_cast<int64_t>(open_.size()), open_.empty() ? 0 : open_.back()++);
        open_.push_back(0);
        const auto name = reader.name();
        inStyle_ = inStyle_ || name == QLatin1String("style");
        sawUse_ = sawUse_ || name == QLatin1String("use");
        sawTextOrNested_ = sawTextOrNested_ || name.startsWith(QLatin1String("text")) ||
                           (name == QLatin1String("svg") && open_.size() > 1);
        // A gradient takes all stops up to the next gradient, wherever they stand.
        if (name == QLatin1String("linearGradient") || name == QLatin1String("radialGradient")) stops_ = 0;
        if (name == QLatin1String("stop") && ++stops_ > kMaxGradientStops) return Danger::kStops;
        Danger danger = Danger::kNone;
        if (name == QLatin1String("image")) {
            forEachAttribute(reader, QLatin1String("href"), [&](const QString& href) {
                if (danger == Danger::kNone) danger = links_.inspectImage(href);
            });
        }
        return danger;
    }

    LinkedFiles& links_;
    StyleCost styles_;
    std::vector<int64_t> open_;  // the elements that have not ended: how many children of each have begun
    int stops_ = 0;              // of the present gradient
    bool inStyle_ = false;
    bool sawUse_ = false;
    bool sawTextOrNested_ = false;
};

// A second reading, for the few documents with uses: IDs are kept for these alone.
bool usesWithinLimits(const QByteArray& xml) {
    UseExpansion uses;
    const auto read = readTokens(xml, [&](QXmlStreamReader::TokenType token, const QXmlStreamReader& reader) {
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
        return Danger::kNone;
    });
    return read.danger == Danger::kNone && uses.withinLimits();
}

DangerousPlace findDanger(const QByteArray& xml, LinkedFiles& links, bool& hasTextOrNested) {
    if (!withinLimits(decodeDocument(xml))) return {Danger::kText, 0};
    Inspection inspection(links);
    const DangerousPlace found =
        readTokens(xml, [&](QXmlStreamReader::TokenType token, const QXmlStreamReader& reader) {
            return inspection.inspect(token, reader);
        });
    hasTextOrNested = inspection.sawTextOrNested();
    if (found.danger != Danger::kNone) return found;
    if (!inspection.stylesWithinLimits()) return {Danger::kStyles, 0};
    if (inspection.sawUse() && !usesWithinLimits(xml)) return {Danger::kUses, 0};
    return {};
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
    if (findDanger(*xml, links, document.hasTextOrNested).danger != Danger::kNone) return std::nullopt;
    document.linkedFiles = links.files();
    return document;
}

DangerousPlace findDanger(const QByteArray& xml, const QString& fileName) {
    LinkedFiles links(fileName, isCompressedName(fileName));
    bool hasTextOrNested = false;
    return findDanger(xml, links, hasTextOrNested);
}

}  // namespace tzsvg
