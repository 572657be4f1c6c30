// A plain document's elements are looked at by the reader for such, which takes a third of the time of Qt's.
// Any other's, and where a danger is seen, by Qt's own on the same bytes, so that no trick of encoding,
// entity or default attribute shows the renderer another document than the one looked at; before that, a look
// at the bare text bounds what it costs.
#include "svg/guard/DocumentGuard.h"

#include <QFileInfo>
#include <QXmlStreamReader>
#include <type_traits>
#include <vector>

#include "svg/guard/LinkedFiles.h"
#include "svg/guard/StyleCost.h"
#include "svg/guard/UseExpansion.h"
#include "svg/tree/DocumentLimits.h"
#include "svg/tree/DocumentText.h"
#include "svg/tree/GzipText.h"
#include "svg/tree/PlainXmlReader.h"

namespace tzsvg {
namespace {

QStringView withoutPrefix(QStringView name) {
    return name.mid(name.indexOf(u':') + 1);
}

// Hands the value of every attribute of that name to `use`, whatever its prefix: which of "href" and
// "xlink:href" a renderer prefers depends on its version.
template <class Reader, class Use>
void forEachAttribute(const Reader& reader, QLatin1String name, Use&& use) {
    const auto& attributes = reader.attributes();
    for (const auto& attribute : attributes) {
        if (withoutPrefix(attribute.qualifiedName()) == name) use(attribute.value().toString());
    }
}

// Reads a document up to the end of its root, where the renderer stops too, and hands every token to `look`,
// up to the first danger.
template <class Reader, class Look>
DangerousPlace readTokens(Reader& reader, Look&& look) {
    int depth = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && ++depth > kMaxElementDepth) break;
        const Danger danger = look(token);
        if (danger != Danger::kNone) return {danger, reader.characterOffset()};
        if (token == QXmlStreamReader::EndElement && --depth == 0) return {};
    }
    return {Danger::kText, reader.characterOffset()};
}

// One look at a document: what links, styles and uses it has.
class Inspection {
  public:
    explicit Inspection(LinkedFiles& links) : links_(links) {}

    template <class Reader>
    Danger inspect(QXmlStreamReader::TokenType token, const Reader& reader) {
        switch (token) {
            case QXmlStreamReader::StartDocument:
                return inspectStart(reader);
            case QXmlStreamReader::StartElement:
                return inspectElement(reader);
            case QXmlStreamReader::EndElement:
                inStyle_ = inStyle_ && !open_.back().isStyle;
                open_.pop_back();
                return Danger::kNone;
            case QXmlStreamReader::Characters:
                if (inStyle_) styles_.addSheet(reader.text());
                return Danger::kNone;
            case QXmlStreamReader::ProcessingInstruction:
                if constexpr (std::is_base_of_v<QXmlStreamReader, Reader>) return inspectInstruction(reader);
                return Danger::kNone;  // plain documents have none
            default:
                return Danger::kNone;
        }
    }

    bool stylesWithinLimits() const { return styles_.withinLimits(); }
    bool sawUse() const { return sawUse_; }

  private:
    struct OpenElement {
        int64_t children;  // how many have begun
        bool isStyle;
    };

    // Qt's reader decodes the bytes as the renderer does; the other one was given them as UTF-8.
    static Danger inspectStart(const QXmlStreamReader& /*reader*/) { return Danger::kNone; }
    static Danger inspectStart(const PlainXmlReader& reader) {
        const bool isUtf8 =
            reader.documentEncoding().compare(QLatin1String("UTF-8"), Qt::CaseInsensitive) == 0;
        return isUtf8 ? Danger::kNone : Danger::kText;
    }

    Danger inspectInstruction(const QXmlStreamReader& reader) {
        if (reader.processingInstructionTarget() != QLatin1String("xml-stylesheet")) return Danger::kNone;
        return links_.inspectStyleSheet(reader.processingInstructionData().toString(), styles_);
    }

    template <class Reader>
    Danger inspectElement(const Reader& reader) {
        const QStringView name = withoutPrefix(reader.qualifiedName());
        styles_.addElement(static_cast<int64_t>(open_.size()), open_.empty() ? 0 : open_.back().children++);
        open_.push_back({0, name == QLatin1String("style")});
        inStyle_ = inStyle_ || open_.back().isStyle;
        sawUse_ = sawUse_ || name == QLatin1String("use");
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
    std::vector<OpenElement> open_;
    int stops_ = 0;  // of the present gradient
    bool inStyle_ = false;
    bool sawUse_ = false;
};

// A second reading, for the few documents with uses: IDs are kept for these alone.
template <class Reader>
bool usesWithinLimits(Reader&& reader) {
    UseExpansion uses;
    const auto read = readTokens(reader, [&](QXmlStreamReader::TokenType token) {
        if (token == QXmlStreamReader::StartElement) {
            uses.begin();
            forEachAttribute(reader, QLatin1String("id"), [&](const QString& id) { uses.claim(id); });
            if (withoutPrefix(reader.qualifiedName()) == QLatin1String("use")) {
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

class BytesReader : public QXmlStreamReader {
  public:
    explicit BytesReader(const QByteArray& xml) : QXmlStreamReader(xml) { setNamespaceProcessing(false); }
};

class TextReader : public PlainXmlReader {
  public:
    explicit TextReader(const QString& xml) : PlainXmlReader(xml, Lines::kMany) {}
};

// Looks at a document by one of these. What it finds out is filled in as far as it came.
template <class Reader, class Xml>
DangerousPlace look(const Xml& xml, const QString& fileName, SafeDocument& document) {
    LinkedFiles links(fileName, isCompressedName(fileName));
    Inspection inspection(links);
    Reader reader(xml);
    const DangerousPlace found = readTokens(
        reader, [&](QXmlStreamReader::TokenType token) { return inspection.inspect(token, reader); });
    document.linkedFiles = links.files();
    if (found.danger != Danger::kNone) return found;
    if (!inspection.stylesWithinLimits()) return {Danger::kStyles, 0};
    if (inspection.sawUse() && !usesWithinLimits(Reader(xml))) return {Danger::kUses, 0};
    return {};
}

DangerousPlace lookAtDocument(const QByteArray& xml, const QString& fileName, SafeDocument& document) {
    const QString text = decodeDocument(xml);
    const bool isUtf8 = text.toUtf8() == xml;  // well-formed, without a mark
    if (isUtf8 && look<TextReader>(text, fileName, document).danger == Danger::kNone) return {};
    if (!withinLimits(text)) return {Danger::kText, 0};
    return look<BytesReader>(xml, fileName, document);
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
    if (lookAtDocument(*xml, fileName, document).danger != Danger::kNone) return std::nullopt;
    if (isCompressedName(fileName)) document.bytes = *xml;
    return document;
}

DangerousPlace findDanger(const QByteArray& xml, const QString& fileName) {
    SafeDocument document;
    return lookAtDocument(xml, fileName, document);
}

}  // namespace tzsvg
