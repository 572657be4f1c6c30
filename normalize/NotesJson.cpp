#include "normalize/NotesJson.h"

#include "normalize/JsonWriting.h"

namespace tznormalize {

std::string notesJson(const Normalized& normalized, const QString& fileName) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writeHead(writer, "tznotes", fileName);
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
    writeMore(writer, normalized.notes.leftOutOfList());
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
