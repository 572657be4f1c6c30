#include "host/NormalizerLibrary.h"

#include <dlfcn.h>

#include <filesystem>
#include <mutex>

#include "host/core/Installed.h"
#include "host/core/OperationError.h"

namespace tzhost {
namespace {

constexpr const char* kLibraryName = "libtznormalize.so";

struct Loaded {
    NormalizerLibrary entries;
    std::string failure;  // why there is none
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

Loaded load() {
    void* const handle = dlopen(libraryFile().c_str(), RTLD_NOW | RTLD_LOCAL);
    Loaded loaded;
    NormalizerLibrary& library = loaded.entries;
    if (handle) {
        library.normalize = reinterpret_cast<TzNormalizeFunction>(dlsym(handle, "tzNormalize"));
        library.check = reinterpret_cast<TzCheckFunction>(dlsym(handle, "tzCheckDrawing"));
        library.free = reinterpret_cast<TzNormalizeFreeFunction>(dlsym(handle, "tzNormalizeFree"));
    }
    if (!library.normalize || !library.check || !library.free) {
        const char* const message = dlerror();
        loaded.failure = message ? message : "it has no such entry";
    }
    return loaded;
}

}  // namespace

void lookForNormalizerIn(const std::filesystem::path& folder) {
    const std::lock_guard held(folderLock);
    namedFolder = folder;
}

const NormalizerLibrary& NormalizerLibrary::loaded() {
    static const Loaded kLoaded = load();
    if (!kLoaded.failure.empty())
        throw OperationError(kLibraryName, "load normalizer", kTzNotFound, kLoaded.failure);
    return kLoaded.entries;
}

std::string textOf(const rapidjson::Value& object, const char* key) {
    const rapidjson::Value& value = object[key];
    return {value.GetString(), value.GetStringLength()};
}

}  // namespace tzhost
