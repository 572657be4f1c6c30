#include "normalize/check/Recognition.h"

#include <QXmlStreamReader>
#include <optional>

#include "normalize/check/CheckedDocument.h"
#include "normalize/text/Length.h"
#include "normalize/text/ViewBox.h"
#include "svg/tree/DocumentLimits.h"
#include "svg/tree/DocumentText.h"
#include "svg/tree/XmlReader.h"

namespace tznormalize {
namespace {

constexpr FindingRule kEmpty{"empty", ""};
constexpr FindingRule kCompressed{"compressed", "compressed drawings are read"};
constexpr FindingRule kNotSvg{"not-svg", ""};
constexpr FindingRule kPrefixedSvg{"prefix", "names are written without the prefix"};
constexpr FindingRule kNestedSvg{"nested-svg", "nested drawings become groups"};
constexpr FindingRule kNotWellFormed{"not-well-formed", ""};
constexpr FindingRule kLineBreak{"line-break", "everything is written on one line"};
constexpr FindingRule kLimit{"limit", ""};
constexpr FindingRule kNoSize{"no-size", ""};
constexpr FindingRule kSmall{"small", "small pages are written larger"};

bool isCompressed(const QByteArray& bytes) {
    return bytes.startsWith("\x1f\x8b");
}

struct SyntaxError {
    QString text;
    qint64 offset;  // up to where it was read
};

std::optional<SyntaxError> syntaxErrorOf(const QString& xml) {
    tzsvg::XmlReader reader(xml);
    QXmlStreamReader& stream = reader.stream();
    while (!stream.atEnd()) stream.readNext();
    if (!stream.hasError()) return std::nullopt;
    return SyntaxError{stream.errorString().simplified(), stream.characterOffset()};
}

// The name in the first start tag; empty when there is none.
QString rootName(const QString& xml) {
    tzsvg::XmlReader reader(xml);
    while (!reader.stream().atEnd()) {
        if (reader.stream().readNext() == QXmlStreamReader::StartElement)
            return reader.stream().qualifiedName().toString();
    }
    return {};
}

QString whichLimit(const QString& xml) {
    if (xml.contains(u"<!ENTITY"))
        return QStringLiteral("its entities make too much of it, or nest it too deeply");
    tzsvg::XmlReader reader(xml);
    QXmlStreamReader& stream = reader.stream();
    for (int depth = 0; !stream.atEnd();) {
        const QXmlStreamReader::TokenType token = stream.readNext();
        if (token == QXmlStreamReader::EndElement) --depth;
        if (token != QXmlStreamReader::StartElement) continue;
        if (++depth > tzsvg::kMaxElementDepth)
            return QStringLiteral("elements are nested more than %1 deep").arg(tzsvg::kMaxElementDepth);
        if (stream.attributes().size() > tzsvg::kMaxAttributes)
            return QStringLiteral("an element has more than %1 attributes").arg(tzsvg::kMaxAttributes);
    }
    return QStringLiteral("its elements have too many attributes");
}

struct TextPlace {
    qint64 line = 1;
    qint64 column = 1;
};

// Where the character that stands at `offset` stands in the text; the offset may be that in the text without
// its line breaks.
TextPlace placeOf(const QString& text, qint64 offset, bool areBreaksCounted) {
    TextPlace place;
    for (const QChar c : text) {
        const bool isBreak = c == u'\n' || c == u'\r';
        if ((areBreaksCounted || !isBreak) && --offset < 0) break;
        if (c == u'\n') {
            ++place.line;
            place.column = 1;
        } else if (c != u'\r') {
            ++place.column;
        }
    }
    return place;
}

void addRefusal(CheckReport& report, const FindingRule& rule, const QString& text, TextPlace place = {0, 0}) {
    report.isImported = report.isExported = false;
    Finding finding;
    finding.kind = FindingKind::kImportRefused;
    finding.rule = &rule;
    finding.text = text;
    finding.line = place.line;
    finding.column = place.column;
    report.findings.push_back(finding);
}

// Adds the reason for which a text is no document with an "svg" at its root; false when it is one.
bool addNoDrawing(CheckReport& report, const QByteArray& bytes, const QString& text) {
    if (bytes.trimmed().isEmpty()) {
        addRefusal(report, kEmpty, QStringLiteral("the file is empty"));
    } else if (!text.contains(u'<')) {
        addRefusal(report, kNotSvg, QStringLiteral("no SVG: the file holds no markup"));
    } else if (const QString root = rootName(text);
               !root.isEmpty() && root != QLatin1String("svg") && !root.endsWith(QLatin1String(":svg"))) {
        addRefusal(report, kNotSvg, QStringLiteral("no SVG: the outermost element is \"%1\"").arg(root));
    } else if (!tzsvg::withinLimits(text)) {
        addRefusal(report, kLimit, whichLimit(text));
    } else if (const auto error = syntaxErrorOf(text)) {
        addRefusal(report, kNotWellFormed, QStringLiteral("not well-formed: ") + error->text,
                   placeOf(text, error->offset, true));
    } else {
        return false;
    }
    return true;
}

// Whether an image has no whole pixel to one of its sides; a side that is not said is the view box's.
bool isUnderAPixel(const SourceElement& root) {
    constexpr Viewport kNone{0.0, 0.0};
    constexpr double kFontSize = 16.0;
    const std::optional<ViewBox> box = readViewBox(root.attribute(Name::kViewBox));
    const auto isUnder = [&](Name name, Axis axis, double ofBox) {
        const QStringView text = root.attribute(name);
        if (text.endsWith(u'%')) return ofBox < 1.0;
        return readLength(text, axis, kNone, kFontSize).value_or(ofBox) < 1.0;
    };
    return isUnder(Name::kWidth, Axis::kHorizontal, box ? box->width : 1.0) ||
           isUnder(Name::kHeight, Axis::kVertical, box ? box->height : 1.0);
}

}  // namespace

void addUnreadable(CheckReport& report, const QByteArray& bytes, const QString& text, const QString& joined) {
    if (isCompressed(bytes)) {
        addRefusal(report, kCompressed, QStringLiteral("compressed: the import reads plain text only"));
        return;
    }
    if (addNoDrawing(report, bytes, text)) return;
    const auto error = syntaxErrorOf(joined);
    if (!error) {
        addRefusal(report, kNotWellFormed, QStringLiteral("more than one document type"));
        return;
    }
    addRefusal(
        report, kLineBreak,
        QStringLiteral("a line break joins words: lines are read with nothing between them, and then: ") +
            error->text,
        placeOf(text, error->offset, false));
}

void addUnreadableImage(CheckReport& report, const QByteArray& bytes) {
    if (!isCompressed(bytes) && addNoDrawing(report, bytes, tzsvg::decodeDocument(bytes))) return;
    SourceDocument source;
    if (const Reason reason = source.read(bytes)) {
        addRefusal(report, kNotSvg, reason.text, {reason.line, reason.column});
        return;
    }
    const SourceElement& root = source.root();
    const bool saysSize = root.has(Name::kViewBox) || (root.has(Name::kWidth) && root.has(Name::kHeight));
    if (saysSize && !isUnderAPixel(root)) return;
    addRefusal(report, saysSize ? kSmall : kNoSize,
               saysSize ? QStringLiteral("it is less than a pixel wide or high")
                        : QStringLiteral("it says no size, and nothing of a size is drawn"),
               {root.line(), root.column()});
}

bool checkRoots(const CheckedDocument& document, CheckReport& report) {
    const std::vector<CheckedElement>& elements = document.elements();
    size_t count = 0;
    for (uint32_t i = 0; i < elements.size(); ++i) {
        if (elements[i].node->element() != tzsvg::Element::kSvg || ++count == 1) continue;
        document.add(report, FindingKind::kImportRefused, kNestedSvg, i, {},
                     QStringLiteral("an svg element inside of the drawing"));
    }
    if (count == 0) {
        const QString& root = elements.front().node->name();
        const bool isPrefixed = root.endsWith(QLatin1String(":svg"));
        document.add(report, FindingKind::kImportRefused, isPrefixed ? kPrefixedSvg : kNotSvg, 0, {},
                     isPrefixed ? QStringLiteral("names with a prefix are not known to the import")
                                : QStringLiteral("no SVG: the outermost element is \"%1\"").arg(root));
    }
    if (report.findings.empty()) return true;
    report.isImported = report.isExported = false;
    return false;
}

}  // namespace tznormalize
