#include "normalize/check/ImageRules.h"

#include <QFileInfo>
#include <algorithm>

#include "normalize/convert/Conversion.h"
#include "normalize/convert/Look.h"
#include "normalize/document/TagPlaces.h"
#include "normalize/geometry/ShapeOutline.h"
#include "svg/guard/DocumentGuard.h"
#include "svg/guard/StyleCost.h"
#include "svg/guard/UseExpansion.h"
#include "svg/tree/DocumentText.h"
#include "svg/tree/GzipText.h"

namespace tznormalize {
namespace {

constexpr FindingRule kCompression{"compression", "compressed drawings are known by their bytes"};
constexpr FindingRule kLinkedSvg{"linked-svg", "pictures that are drawings are left out"};
constexpr FindingRule kLinkedPipe{"linked-pipe", "only plain files are read"};
constexpr FindingRule kStyleLimit{"style-limit", "style sheets are resolved into attributes"};
constexpr FindingRule kImageLimit{"limit", ""};
constexpr FindingRule kDashes{"dashes", "such strokes become solid"};

void refuse(CheckReport& report, const FindingRule& rule, const QString& text, qint64 line, qint64 column) {
    report.isImported = report.isExported = false;
    Finding finding;
    finding.kind = FindingKind::kImportRefused;
    finding.rule = &rule;
    finding.text = text;
    finding.line = line;
    finding.column = column;
    report.findings.push_back(finding);
}

// The XML of the document as the image has it; nothing, with a reason, when the file's name misleads. What
// comes from a stream has a name without an ending.
std::optional<QByteArray> xmlOf(const QByteArray& bytes, const QString& fileName, CheckReport& report) {
    const bool isPacked = bytes.startsWith("\x1f\x8b");
    const bool isNamedSo = tzsvg::isCompressedName(fileName);
    if (isPacked != isNamedSo && !QFileInfo(fileName).suffix().isEmpty()) {
        refuse(report, kCompression,
               isPacked ? QStringLiteral("compressed, and its name ends neither in .svgz nor in .svg.gz")
                        : QStringLiteral("not compressed, as its name says it is"),
               0, 0);
        return std::nullopt;
    }
    return isPacked ? tzsvg::unpackGzip(bytes, tzsvg::kMaxUnpackedBytes) : bytes;
}

struct DangerText {
    const FindingRule* rule = nullptr;
    QString text;
};

// No rule for what is none, and for what is no document: that is told by others.
DangerText textOf(tzsvg::Danger danger) {
    switch (danger) {
        case tzsvg::Danger::kLinkedSvg:
            return {&kLinkedSvg,
                    QStringLiteral("an image leads to another SVG, which a renderer may follow without end")};
        case tzsvg::Danger::kRasters:
            return {
                &kImageLimit,
                QStringLiteral("its pictures unpack to more than %1 MiB").arg(tzsvg::kMaxRasterBytes >> 20)};
        case tzsvg::Danger::kPipe:
            return {&kLinkedPipe, QStringLiteral("a link leads to a pipe or a device")};
        case tzsvg::Danger::kUses:
            return {&kImageLimit,
                    QStringLiteral("its uses lead back to themselves, are nested too deeply, or make "
                                   "more than %1 elements of it")
                        .arg(tzsvg::UseExpansion::kMaxUsedElements)};
        case tzsvg::Danger::kStyles:
            return {&kStyleLimit,
                    QStringLiteral("its style sheets are too large, or have too many rules for so "
                                   "many elements")};
        case tzsvg::Danger::kStops:
            return {&kImageLimit,
                    QStringLiteral("a gradient has more than %1 stops").arg(tzsvg::kMaxGradientStops)};
        case tzsvg::Danger::kNone:
        case tzsvg::Danger::kFile:
        case tzsvg::Danger::kText:
            break;
    }
    return {};
}

// Where most dashes are, and how many there are.
struct DashSurvey {
    double all = 0.0;
    double most = 0.0;
    const SourceElement* longest = nullptr;
};

void survey(const SourceElement& element, const Cascade& styles, const Style& parent, DashSurvey& out) {
    constexpr Viewport kViewport{100.0, 100.0};
    const Place place{Matrix(), styles.computed(element, parent, kViewport), kViewport};
    if (isShape(element.tag()) && place.style[Property::kStroke] != u"none") {
        const std::vector<double> lengths = dashLengths(place);
        const double dashes =
            lengths.empty()
                ? 0.0
                : dashCount(outlineOf(element, styles, kViewport, place.style.fontSize()), lengths);
        out.all += dashes;
        if (dashes > out.most) {
            out.most = dashes;
            out.longest = &element;
        }
    }
    for (const SourceElement* child = element.firstChild(); child; child = child->nextSibling())
        survey(*child, styles, place.style, out);
}

// The image counts them while it paints, and this is asked when it has found too many, or nothing else is
// known: half of its limits is near enough.
void addDashes(CheckReport& report, const QByteArray& bytes) {
    SourceDocument source;
    if (source.read(bytes)) return;
    Notes unused;
    const Cascade styles(source, unused);
    DashSurvey found;
    survey(source.root(), styles, Style(), found);
    const bool isLong = 2.0 * found.most > double(tzsvg::kMaxDashesOfPath);
    if (!isLong && 2.0 * found.all <= double(tzsvg::kMaxDashes)) return;
    const SourceElement& element = isLong ? *found.longest : source.root();
    refuse(report, kDashes,
           isLong ? QStringLiteral("a line of about %1 dashes; an image may have %2 on one")
                        .arg(found.most, 0, 'f', 0)
                        .arg(tzsvg::kMaxDashesOfPath)
                  : QStringLiteral("lines of about %1 dashes; an image may have %2")
                        .arg(found.all, 0, 'f', 0)
                        .arg(tzsvg::kMaxDashes),
           element.line(), element.column());
}

}  // namespace

void addRefusedImage(CheckReport& report, const QByteArray& bytes, const QString& fileName) {
    const std::optional<QByteArray> xml = xmlOf(bytes, fileName, report);
    if (!xml) return;
    const tzsvg::DangerousPlace found = tzsvg::findDanger(*xml, fileName);
    if (found.danger == tzsvg::Danger::kNone) return addDashes(report, *xml);
    const DangerText known = textOf(found.danger);
    if (!known.rule) return;
    if (found.offset == 0) return refuse(report, *known.rule, known.text, 0, 0);
    const QString text = tzsvg::decodeDocument(*xml);
    TagPlaces place(text);
    place.moveBefore(found.offset);
    refuse(report, *known.rule, known.text, place.line(), place.column());
}

}  // namespace tznormalize
