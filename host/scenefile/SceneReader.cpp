#include "host/scenefile/SceneReader.h"

#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"
#include "host/io/Json.h"
#include "host/scenefile/SceneParser.h"

namespace tzhost {
namespace {

// 0 for a pipe: its size is unknown.
uint64_t fileSize(const std::string& file) {
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

// Skips a byte order mark. False when the text starts with a part of one.
bool passByteOrderMark(JsonStream& stream) {
    if (stream.Peek() != '\xEF') return true;
    for (const char byte : {'\xEF', '\xBB', '\xBF'}) {
        if (stream.Peek() != byte) return false;
        stream.Take();
    }
    return true;
}

// Returns the error with its place; empty when there is none.
std::string parse(JsonFile& file, SceneParser& parser) {
    const auto error = [&](size_t offset, const char* what) {
        return "parse error at " + file.place(offset) + ": " + what;
    };
    JsonStream stream(file);
    if (!passByteOrderMark(stream)) return error(stream.Tell(), "Not a byte order mark.");
    JsonReader reader;
    // Numbers come as text: the parser converts them exactly, and a vertex must be written as an integer.
    // RapidJSON still converts them itself and therefore refuses two forms that no writer uses: a zero with
    // an exponent above 308, and more than 308 digits before the point.
    const rapidjson::ParseResult result = reader.Parse<rapidjson::kParseNumbersAsStringsFlag>(stream, parser);
    if (result.Code() == rapidjson::kParseErrorTermination) return parser.problem();
    if (result.IsError()) return error(result.Offset(), rapidjson::GetParseError_En(result.Code()));
    return stream.atEnd() ? ""
                          : error(stream.Tell(), "The document must not be followed by a NUL character.");
}

// Adds an item with its packages and channels. `where` names it in messages ("items[0]").
void addFileItem(Scene& scene, FileItem& source, const std::string& fileName, const std::string& where) {
    const auto as = [&](const std::string& what, auto&& work) {
        try {
            work();
        } catch (const CTzError& error) {
            throw OperationError(fileName, "read", error.result(), where + ": " + what + ": " + error.what());
        }
    };
    Item& item = scene.addItem(std::move(source.data));
    for (const std::string& package : source.packages) {
        as("package \"" + package + "\"", [&] { item.attachPackage(package); });
    }
    for (const auto& [name, text] : source.channels) {
        as("channel \"" + name + "\"", [&, &name = name, &text = text] { item.putChannel(name, text); });
    }
}

}  // namespace

void readSceneFile(Scene& scene, const InputFile& file) {
    requireReadable(file);
    const std::string& fileName = file.name();
    inStep(fileName, "read", [&] {
        Progress progress(scene.observer(), "reading " + fileName, fileSize(file.readName()));
        JsonFile source(file.readName(), progress);
        SceneParser parser;
        if (const std::string problem = parse(source, parser); !problem.empty()) {
            throw OperationError(fileName, "read", kTzInvalidArgument, problem);
        }
        const size_t itemsBefore = scene.items().size();
        try {
            size_t index = 0;
            for (FileItem& item : parser.items()) {
                addFileItem(scene, item, fileName, "items[" + std::to_string(index++) + "]");
            }
        } catch (...) {
            scene.truncate(itemsBefore);
            throw;
        }
    });
}

}  // namespace tzhost
