// See the header.
#include "host/Normalizer.h"

#include <dlfcn.h>

#include <mutex>
#include <utility>

#include "host/core/Installed.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"
#include "host/io/Json.h"
#include "normalize/tznormalize.h"

namespace tzhost {
namespace {

constexpr const char* kLibraryName = "libtznormalize.so";

struct Entries {
    TzNormalizeFunction normalize = nullptr;
    TzNormalizeFreeFunction free = nullptr;
    std::string failure;  // why there are none
};

std::mutex folderLock;
std::filesystem::path namedFolder;  // guarded by folderLock

// The library's file; its bare name where only the system may know it.
std::string libraryFile() {
    std::filesystem::path named;
    {
        const std::lock_guard held(folderLock);
        named = namedFolder;
    }
    for (const std::filesystem::path& file :
         {named / kLibraryName, std::filesystem::path(installedFile(kLibraryName))}) {
        std::error_code error;
        if (file.has_parent_path() && std::filesystem::exists(file, error)) return file.native();
    }
    return kLibraryName;
}

Entries loadLibrary() {
    void* const library = dlopen(libraryFile().c_str(), RTLD_NOW | RTLD_LOCAL);
    Entries entries;
    if (library) {
        entries.normalize = reinterpret_cast<TzNormalizeFunction>(dlsym(library, "tzNormalize"));
        entries.free = reinterpret_cast<TzNormalizeFreeFunction>(dlsym(library, "tzNormalizeFree"));
    }
    if (!entries.normalize || !entries.free) {
        const char* const message = dlerror();
        entries.failure = message ? message : "it has no such entry";
    }
    return entries;
}

// Loaded once; it stays for as long as the process.
const Entries& libraryEntries() {
    static const Entries kEntries = loadLibrary();
    return kEntries;
}

class Result {
  public:
    explicit Result(TzNormalizeFreeFunction free) : free_(free) {}
    ~Result() { free_(&result_); }
    Result(const Result&) = delete;
    Result& operator=(const Result&) = delete;

    TzNormalizeResult* get() { return &result_; }
    std::string document() const { return {result_.document, result_.documentSize}; }
    std::string notes() const { return {result_.notes, result_.notesSize}; }

  private:
    TzNormalizeResult result_ = {};
    TzNormalizeFreeFunction free_;
};

std::string textOf(const rapidjson::Value& object, const char* key) {
    const rapidjson::Value& value = object[key];
    return {value.GetString(), value.GetStringLength()};
}

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

void lookForNormalizerIn(const std::filesystem::path& folder) {
    const std::lock_guard held(folderLock);
    namedFolder = folder;
}

NormalizedText normalizeFile(const std::filesystem::path& file) {
    requireReadable(file);
    requireUtf8Name(file, "open");
    const Entries& library = libraryEntries();
    if (!library.failure.empty())
        throw OperationError(kLibraryName, "load normalizer", kTzNotFound, library.failure);
    Result result(library.free);
    const int code = library.normalize(file.c_str(), nullptr, 0, result.get());
    if (code == TZNORMALIZE_FAILED) throw OperationError(file.native(), "normalize", kTzOutOfMemory);
    NormalizedText normalized;
    normalized.notesJson = result.notes();
    rapidjson::Document report;
    report.Parse(normalized.notesJson.data(), normalized.notesJson.size());
    if (code == TZNORMALIZE_REFUSED) throwRefusal(file.native(), report["refused"]);
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
