#include "host/Normalizer.h"

#include "host/NormalizerLibrary.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"

namespace tzhost {
namespace {

// Why the drawing was refused: "line 3, column 7: not well-formed: …".
[[noreturn]] void throwRefusal(const std::string& file, const rapidjson::Value& refused) {
    std::string reason = textOf(refused, "reason");
    if (const int64_t line = refused["line"].GetInt64(); line > 0) {
        reason = "line " + std::to_string(line) + ", column " + std::to_string(refused["column"].GetInt64()) +
                 ": " + reason;
    }
    const bool isNoDrawing = textOf(refused, "code") == "not-svg";
    throw OperationError(file, "normalize", isNoDrawing ? kTzNotRecognised : kTzFailed, reason);
}

}  // namespace

NormalizedText normalizeFile(const InputFile& file, Purpose purpose) {
    requireReadable(file);
    requireUtf8Name(file.name(), "open");
    const std::string& name = file.name();
    const std::string text = file.isText() ? contentOf(file) : "";
    const NormalizerLibrary& library = NormalizerLibrary::loaded();
    NormalizerResult result(library);
    const int code = library.normalize(name.c_str(), file.isText() ? text.data() : nullptr, text.size(),
                                       purpose == Purpose::kImage ? 1 : 0, result.get());
    if (code == TZNORMALIZE_FAILED) throw OperationError(name, "normalize", kTzOutOfMemory);
    NormalizedText normalized;
    normalized.notesJson = result.notes();
    rapidjson::Document report;
    report.Parse(normalized.notesJson.data(), normalized.notesJson.size());
    if (code == TZNORMALIZE_REFUSED) throwRefusal(name, report["refused"]);
    normalized.document = result.document();
    normalized.moreNotes = report["more"].GetUint64();
    for (const rapidjson::Value& note : report["notes"].GetArray()) {
        normalized.notes.push_back({textOf(note, "code"), note["line"].GetInt64(), note["column"].GetInt64(),
                                    textOf(note, "element"), textOf(note, "id"), textOf(note, "attribute"),
                                    textOf(note, "text")});
    }
    return normalized;
}

}  // namespace tzhost
