// See the header.
#include "host/SceneReader.h"

#include <array>
#include <fstream>
#include <nlohmann/json.hpp>

#include "host/InputFile.h"
#include "host/OperationError.h"
#include "host/Progress.h"
#include "host/SceneParser.h"

namespace tzhost {
namespace {

constexpr size_t kBufferSize = size_t{1} << 16U;

// A file whose bytes are counted as they are read.
class CountedFile : public std::filebuf {
  public:
    explicit CountedFile(Progress& progress) : progress_(progress) {}

  protected:
    int_type underflow() override {
        const int_type next = std::filebuf::underflow();
        progress_.step(static_cast<uint64_t>(egptr() - gptr()));
        progress_.look();
        return next;
    }

  private:
    Progress& progress_;
};

// Of a pipe it is unknown how much it brings.
uint64_t fileSize(const std::filesystem::path& file) {
    std::error_code error;
    const uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
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

void readSceneFile(Scene& scene, const std::filesystem::path& file) {
    requireReadable(file);
    const std::string& fileName = file.native();
    inStep(fileName, "read", [&] {
        std::vector<char> buffer(kBufferSize);
        Progress progress("reading " + fileName, fileSize(file));
        CountedFile source(progress);
        source.pubsetbuf(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        if (!source.open(file, std::ios::in | std::ios::binary)) throw CTzError(kTzFailed);
        std::istream stream(&source);

        SceneParser parser;
        if (!nlohmann::json::sax_parse(stream, &parser)) {
            throw OperationError(fileName, "read", kTzInvalidArgument, parser.problem());
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
