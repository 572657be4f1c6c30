#include "normalize/check/CheckJson.h"

#include "normalize/JsonWriting.h"

namespace tznormalize {
namespace {

void writeFinding(JsonWriter& writer, const Finding& finding) {
    writer.StartObject();
    writeWord(writer, "kind", findingKindText(finding.kind));
    writePlace(writer, finding.rule->code, finding.line, finding.column);
    writeText(writer, "element", finding.element);
    writeText(writer, "id", finding.id);
    writeText(writer, "attribute", finding.attribute);
    writeText(writer, "text", finding.text);
    writeWord(writer, "remedy", finding.rule->remedy);
    writer.EndObject();
}

}  // namespace

std::string checkJson(const CheckReport& report, const QString& fileName) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writeHead(writer, "tzcheck", fileName);
    writeWord(writer, "status",
              report.isRefused()        ? "refused"
              : report.findings.empty() ? "clean"
                                        : "losses");
    writer.Key("imports");
    writer.Bool(report.isImported);
    writer.Key("exports");
    writer.Bool(report.isExported);
    writer.Key("findings");
    writer.StartArray();
    for (const Finding& finding : report.findings) writeFinding(writer, finding);
    writer.EndArray();
    writeMore(writer, report.leftOutOfList);
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace tznormalize
