#include "normalize/check/CheckJson.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace tznormalize {
namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeText(Writer& writer, const char* key, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    writer.Key(key);
    writer.String(utf8.constData(), rapidjson::SizeType(utf8.size()));
}

void writeWord(Writer& writer, const char* key, const char* word) {
    writer.Key(key);
    writer.String(word);
}

void writeFinding(Writer& writer, const Finding& finding) {
    writer.StartObject();
    writeWord(writer, "kind", findingKindText(finding.kind));
    writeWord(writer, "code", finding.rule->code);
    writer.Key("line");
    writer.Int64(finding.line);
    writer.Key("column");
    writer.Int64(finding.column);
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
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writeWord(writer, "format", "tzcheck");
    writer.Key("version");
    writer.Int(1);
    writeText(writer, "file", fileName);
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
    writer.Key("more");
    writer.Uint64(report.leftOutOfList);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace tznormalize
