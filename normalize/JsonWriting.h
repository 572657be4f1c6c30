// How notes and findings are written as JSON.
#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <QString>

namespace tznormalize {

using JsonWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

inline void writeText(JsonWriter& writer, const char* key, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    writer.Key(key);
    writer.String(utf8.constData(), rapidjson::SizeType(utf8.size()));
}

inline void writeWord(JsonWriter& writer, const char* key, const char* word) {
    writer.Key(key);
    writer.String(word);
}

// Where something is said about, and which of the words that programs look for says what.
inline void writePlace(JsonWriter& writer, const char* code, qint64 line, qint64 column) {
    writeWord(writer, "code", code);
    writer.Key("line");
    writer.Int64(line);
    writer.Key("column");
    writer.Int64(column);
}

// The start of a document: what it is, and the file that it speaks of.
inline void writeHead(JsonWriter& writer, const char* format, const QString& fileName) {
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writeWord(writer, "format", format);
    writer.Key("version");
    writer.Int(1);
    writeText(writer, "file", fileName);
}

// Its end.
inline void writeMore(JsonWriter& writer, quint64 more) {
    writer.Key("more");
    writer.Uint64(more);
    writer.EndObject();
}

}  // namespace tznormalize
