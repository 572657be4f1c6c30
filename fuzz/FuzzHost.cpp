#include "fuzz/FuzzHost.h"

#include <QHashFunctions>
#include <QtGlobal>
#include <cstdlib>
#include <fstream>

extern "C" ITzModule* _ITzModule_Create(  // NOLINT: the entry's name is the host's, as in module/Module.cpp
    uint32_t hostSdkVersion, uint32_t* moduleSdkVersion, TzResult* result);

namespace tzfuzz {

FuzzHost& FuzzHost::get() {
    static auto* const kHost = new FuzzHost;
    return *kHost;
}

FuzzHost::FuzzHost() {
#if QT_VERSION >= QT_VERSION_CHECK(6, 2, 0)
    QHashSeed::setDeterministicGlobalSeed();  // an input behaves the same each time
#else
    qSetGlobalQHashSeed(0);
#endif
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    uint32_t version = 0;
    TzResult result = kTzOk;
    module_ = CTzPtr<ITzModule>::adopt(_ITzModule_Create(kTzSdkVersion, &version, &result));
    if (!module_ || tzFailed(module_->initialise(host_.object())) || !folder_.isValid()) std::abort();
}

std::filesystem::path FuzzHost::fileName(std::string_view name) const {
    return std::filesystem::path(folder_.path().toStdString()) / name;
}

std::filesystem::path FuzzHost::file(std::string_view name, std::string_view bytes) {
    std::filesystem::path path = fileName(name);
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}

}  // namespace tzfuzz
