#include "host/core/Installed.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

namespace tzhost {
namespace {

std::filesystem::path ownFolder() {
    Dl_info self{};
    if (dladdr(reinterpret_cast<const void*>(&installedFile), &self) == 0 || !self.dli_fname) return {};
    std::error_code error;
    const auto file = std::filesystem::canonical(self.dli_fname, error);
    // The program itself is told as it was called, which need not be a path.
    const auto own = error ? std::filesystem::canonical("/proc/self/exe", error) : file;
    return own.parent_path();
}

}  // namespace

std::string installedFile(const char* name) {
    const std::filesystem::path folder = ownFolder();
    std::error_code error;
    for (const char* const from : {".", "tzsvg", "../lib/tzsvg", "../tzsvg", "../../tzsvg"}) {
        const auto file = (folder / from / name).lexically_normal();
        if (std::filesystem::exists(file, error)) return file.native();
    }
    return (folder / name).native();
}

std::string defaultModule() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): whoever changes the environment meanwhile has been warned by its
    // manual
    const char* const named = std::getenv("TZSVG_MODULE");
    return named && *named ? named : installedFile("tzsvg.so");
}

}  // namespace tzhost
