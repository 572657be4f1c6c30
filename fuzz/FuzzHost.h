// What the fuzz targets have in common: the reference host with the module linked into the same program, so
// that the module's code is instrumented, and a folder for the files that the input is handed over in.
#pragma once

#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "host/Host.h"
#include "host/core/OperationError.h"
#include "hostsdk/ITzModule.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace tzfuzz {

inline std::string_view asText(const uint8_t* data, size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

class FuzzHost {
  public:
    // The one of this process, made at the first call. It is never destroyed: Qt's application is
    // not.
    static FuzzHost& get();

    tzhost::Host& host() { return host_; }

    // A file of that name in the folder, with those bytes; a name for a file to be written there.
    std::filesystem::path file(std::string_view name, std::string_view bytes);
    std::filesystem::path fileName(std::string_view name) const;

    // Does the work, which may be refused: by an OperationError and by nothing else.
    template <class Work>
    static bool orRefused(Work&& work) {
        try {
            work();
            return true;
        } catch (const tzhost::OperationError&) {
            return false;
        }
    }

  private:
    FuzzHost();

    tzhost::Host host_;
    CTzPtr<ITzModule> module_;
    QTemporaryDir folder_;
};

}  // namespace tzfuzz
