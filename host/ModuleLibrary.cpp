#include "host/ModuleLibrary.h"

#include <dlfcn.h>

#include <array>
#include <cstdio>

#include "host/NormalizerLibrary.h"
#include "host/core/OperationError.h"

namespace tzhost {
namespace {

std::string loaderMessage(const std::string& fileName) {
    const char* const message = dlerror();
    std::string text = message ? message : "cannot be loaded";
    // The message names the file already.
    if (text.rfind(fileName + ": ", 0) == 0) text.erase(0, fileName.size() + 2);
    return text;
}

std::string versionText(uint32_t version) {
    return std::to_string(version >> 16U) + "." + std::to_string(version & 0xFFFFU);
}

}  // namespace

void ModuleLibrary::CloseLibrary::operator()(void* library) const {
    dlclose(library);
}

ModuleLibrary::ModuleLibrary(Host& host, const std::filesystem::path& file) : host_(host) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        throw OperationError(file.native(), "load module", kTzNotFound, "no such module file");
    }
    // A name without a slash would be looked for in the system's library folders.
    const std::string fileName = std::filesystem::absolute(file).native();
    library_.reset(dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL));
    if (!library_) throw OperationError(file.native(), "load module", kTzFailed, loaderMessage(fileName));

    lookForNormalizerIn(std::filesystem::path(fileName).parent_path());
    create(file.native());
    const TzResult initialised = module_->initialise(host_.object());
    if (tzFailed(initialised)) {
        // It is not shut down, since it never started. Its servers go first, then the module.
        host_.servers().forget();
        module_ = {};
        throw OperationError(file.native(), "initialise module", initialised);
    }
}

ModuleLibrary::~ModuleLibrary() {
    if (!library_) return;
    // Reports are dropped: whoever wants them calls unload().
    tzGate([&] { unload(); });
}

std::vector<std::string> ModuleLibrary::unload() {
    std::vector<std::string> reports;
    if (!library_) return reports;
    host_.servers().forget();
    shutDown(reports);
    for (std::string& report : host_.foreignReferences()) reports.push_back(std::move(report));
    close(!reports.empty());
    return reports;
}

void ModuleLibrary::shutDown(std::vector<std::string>& reports) {
    const TzResult shutDown = module_->shutdown();
    if (tzFailed(shutDown))
        reports.push_back(std::string("shutdown of the module: ") + tzResultText(shutDown));
    const uint32_t left = module_.detach()->release();
    if (left != 0) reports.push_back("module: " + std::to_string(left) + " references not released");
}

void ModuleLibrary::close(bool mayStillBeCalled) {
    void* const library = library_.release();
    if (!mayStillBeCalled) CloseLibrary()(library);
}

void ModuleLibrary::create(const std::string& fileName) {
    const auto entry = reinterpret_cast<TzModuleEntry>(dlsym(library_.get(), kTzModuleEntryName));
    if (!entry) {
        throw OperationError(fileName, "create module", kTzNoInterface,
                             std::string("the library has no entry ") + kTzModuleEntryName);
    }
    uint32_t moduleVersion = 0;
    TzResult result = kTzOk;
    ITzModule* const module = entry(kTzSdkVersion, &moduleVersion, &result);
    // Without a common version not even release() of the object may be called.
    if (!tzSdkCompatible(kTzSdkVersion, moduleVersion)) {
        throw OperationError(fileName, "create module", kTzVersionMismatch,
                             "the module was built for SDK " + versionText(moduleVersion) +
                                 ", the host for " + versionText(kTzSdkVersion));
    }
    if (!module) throw OperationError(fileName, "create module", tzFailed(result) ? result : kTzFailed);
    module_ = CTzPtr<ITzModule>::adopt(module);
}

Session::Session(const std::vector<std::filesystem::path>& moduleFiles, std::shared_ptr<Observer> observer)
    : host(std::move(observer)) {
    for (const std::filesystem::path& file : moduleFiles)
        modules_.push_back(std::make_unique<ModuleLibrary>(host, file));
}

Session::~Session() {
    tzGate([&] { unload(); });
}

std::vector<std::string> Session::unload() {
    std::vector<std::string> reports;
    host.servers().forget();
    std::vector<std::unique_ptr<ModuleLibrary>> modules;
    modules.swap(modules_);
    for (size_t i = modules.size(); i > 0; --i) modules[i - 1]->shutDown(reports);
    for (std::string& report : host.foreignReferences()) reports.push_back(std::move(report));
    for (const auto& module : modules) module->close(!reports.empty());
    return reports;
}

}  // namespace tzhost
