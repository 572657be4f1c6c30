// What an import and an export do not take as it is: one finding for each construct.
#pragma once

#include <QString>
#include <vector>

namespace tznormalize {

enum class FindingKind {
    kImportRefused,  // "import-refused": the whole drawing is
    kExportRefused,  // "export-refused": it is imported, and cannot be exported then
    kDropped,        // "dropped": not in the scene, or lost on the way back
    kChanged,        // "changed": comes back looking otherwise
};

const char* findingKindText(FindingKind kind);

// Why something is found, and what a normalization does about it. One constant each; findings point to them.
struct FindingRule {
    const char* code;    // "number-form"
    const char* remedy;  // "numbers are written plainly"; empty when nothing helps
};

struct Finding {
    FindingKind kind = FindingKind::kChanged;
    const FindingRule* rule = nullptr;
    qint64 line = 0;  // of the element's start tag, counted from 1, as is the column; 0: of the whole file
    qint64 column = 0;
    QString element;    // "path"; empty for the whole file
    QString id;         // the element's, may be empty
    QString attribute;  // may be empty
    QString text;       // "1e-5 has an exponent"

    bool isRefusal() const {
        return kind == FindingKind::kImportRefused || kind == FindingKind::kExportRefused;
    }
};

struct CheckReport {
    static constexpr size_t kMostFindings = 10'000;

    // Whether the module takes the drawing.
    bool isImported = true;
    bool isExported = true;

    // Refusals first, then losses; each in the order of the document.
    std::vector<Finding> findings;
    size_t leftOutOfList = 0;  // found beyond kMostFindings

    bool isRefused() const { return !isImported || !isExported; }

    // The one that says why the drawing is refused; null when it is not.
    const Finding* reason() const;
};

}  // namespace tznormalize
