#include "normalize/check/Check.h"

#include "normalize/check/CheckedDocument.h"
#include "normalize/check/ElementLosses.h"
#include "normalize/check/ExportRules.h"
#include "normalize/check/ImageRules.h"
#include "normalize/check/ImportRules.h"
#include "normalize/check/Recognition.h"

namespace tznormalize {
namespace {

constexpr FindingRule kUnreadable{"unreadable", ""};

}  // namespace

const char* findingKindText(FindingKind kind) {
    switch (kind) {
        case FindingKind::kImportRefused:
            return "import-refused";
        case FindingKind::kExportRefused:
            return "export-refused";
        case FindingKind::kDropped:
            return "dropped";
        case FindingKind::kChanged:
            break;
    }
    return "changed";
}

const Finding* CheckReport::reason() const {
    return findings.empty() || !findings.front().isRefusal() ? nullptr : &findings.front();
}

CheckReport checkDrawing(const QByteArray& bytes) {
    CheckReport report;
    CheckedDocument document;
    if (!document.read(bytes, report)) return report;
    const ImportedGeometry geometry = checkImport(document, report);
    if (report.isImported) checkExport(document, geometry, report);
    checkLosses(document, geometry, report);
    return report;
}

CheckReport checkImage(const QByteArray& bytes, const QString& fileName) {
    CheckReport report;
    addRefusedImage(report, bytes, fileName);
    if (report.findings.empty()) addUnreadableImage(report, bytes);
    return report;
}

CheckReport unreadableFile() {
    CheckReport report;
    report.isImported = report.isExported = false;
    CheckedDocument::add(report, FindingKind::kImportRefused, kUnreadable,
                         QStringLiteral("the file cannot be read, or is too large"));
    return report;
}

}  // namespace tznormalize
