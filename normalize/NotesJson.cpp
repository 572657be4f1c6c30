#include "normalize/NotesJson.h"

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

void writePlace(Writer& writer, const char* code, qint64 line, qint64 column) {
    writer.Key("code");
    writer.String(code);
    writer.Key("line");
    writer.Int64(line);
    writer.Key("column");
    writer.Int64(column);
}

}  // namespace

std::string notesJson(const Normalized& normalized, const QString& fileName) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writer.Key("format");
    writer.String("tznotes");
    writer.Key("version");
    writer.Int(1);
    writeText(writer, "file", fileName);
    if (const Reason& refused = normalized.refused) {
        writer.Key("refused");
        writer.StartObject();
        writePlace(writer, refusalText(refused.refusal), refused.line, refused.column);
        writeText(writer, "reason", refused.text);
        writer.EndObject();
    }
    writer.Key("notes");
    writer.StartArray();
    for (const Note& note : normalized.notes.list()) {
        writer.StartObject();
        writePlace(writer, noteCodeText(note.code), note.line, note.column);
        writeText(writer, "element", note.element);
        writeText(writer, "id", note.id);
        writeText(writer, "attribute", note.attribute);
        writeText(writer, "text", note.text);
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("more");
    writer.Uint64(normalized.notes.leftOutOfList());
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

const char* refusalText(Refusal refusal) {
    switch (refusal) {
        case Refusal::kNotSvg:
            return "not-svg";
        case Refusal::kNotWellFormed:
            return "not-well-formed";
        case Refusal::kTooDeep:
            return "too-deep";
        case Refusal::kTooManyElements:
            return "too-many-elements";
        case Refusal::kTooLarge:
            return "too-large";
        case Refusal::kUnreadable:
            return "unreadable";
        case Refusal::kNone:
            break;
    }
    return "none";
}

}  // namespace tznormalize
