#include "host/Checker.h"

#include "host/NormalizerLibrary.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"

namespace tzhost {

DrawingCheck checkDrawing(const InputFile& file, Purpose purpose) {
    requireReadable(file);
    requireUtf8Name(file.name(), "open");
    const std::string text = file.isText() ? contentOf(file) : "";
    const NormalizerLibrary& library = NormalizerLibrary::loaded();
    NormalizerResult result(library);
    if (library.check(file.name().c_str(), file.isText() ? text.data() : nullptr, text.size(),
                      purpose == Purpose::kImage ? 1 : 0, result.get()) != TZNORMALIZE_OK)
        throw OperationError(file.name(), "check", kTzOutOfMemory);
    DrawingCheck check;
    check.json = result.notes();
    rapidjson::Document report;
    report.Parse(check.json.data(), check.json.size());
    check.isImported = report["imports"].GetBool();
    check.isExported = report["exports"].GetBool();
    check.more = report["more"].GetUint64();
    for (const rapidjson::Value& finding : report["findings"].GetArray()) {
        check.findings.push_back(
            {textOf(finding, "kind"), textOf(finding, "code"), finding["line"].GetInt64(),
             finding["column"].GetInt64(), textOf(finding, "element"), textOf(finding, "id"),
             textOf(finding, "attribute"), textOf(finding, "text"), textOf(finding, "remedy")});
    }
    return check;
}

std::string describe(const CheckFinding& finding) {
    std::string text;
    if (!finding.element.empty()) {
        text = "<" + finding.element;
        if (!finding.id.empty()) text += " id=\"" + finding.id + "\"";
        text += "> ";
    }
    if (!finding.attribute.empty()) text += finding.attribute + ": ";
    return text + finding.text;
}

std::string hintOf(const CheckFinding& finding) {
    return finding.remedy.empty() ? std::string() : "; --normalize: " + finding.remedy;
}

std::string explain(const CheckFinding& finding, const std::string& more) {
    std::string text;
    if (finding.line > 0) {
        text = "line " + std::to_string(finding.line) + ", column " + std::to_string(finding.column) + ": ";
    }
    text += describe(finding);
    text += more;
    return text + hintOf(finding);
}

}  // namespace tzhost
