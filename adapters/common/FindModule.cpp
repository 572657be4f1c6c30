#include "adapters/common/FindModule.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

namespace tzadapter {

std::string folderOf(const void* symbol) {
    Dl_info info{};
    if (dladdr(symbol, &info) == 0 || !info.dli_fname) return {};
    std::error_code error;
    const auto file = std::filesystem::canonical(info.dli_fname, error);
    return error ? std::string() : file.parent_path().native();
}

std::string findModule(const void* symbol) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): whoever changes the environment meanwhile has been warned by its
    // manual
    const char* const named = std::getenv("TZSVG_MODULE");
    if (named && *named) return named;
    const std::filesystem::path folder = folderOf(symbol);
    std::error_code error;
    for (const auto& file : {folder / "tzsvg.so", folder / "tzsvg" / "tzsvg.so"}) {
        if (std::filesystem::exists(file, error)) return file.native();
    }
    return (folder / "tzsvg.so").native();
}

}  // namespace tzadapter
