// The exported entry and the module object. From here follow registerServers() to the servers.
#include "module/Module.h"

#include "hostsdk/CTzPolymorph.h"
#include "module/Servers.h"

namespace tzsvg {

TzResult CTzThisModule::initialise(ITzHost* host) noexcept {
    if (!host) return kTzInvalidArgument;
    return tzGate([&] { registerServers(CTzPtr<ITzHost>::share(host)); });
}

// The host is kept by the factories and objects that it holds itself; nothing is left to let go of.
TzResult CTzThisModule::shutdown() noexcept {
    return kTzOk;
}

}  // namespace tzsvg

// The name is the host's, reserved identifier or not.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
extern "C" __attribute__((visibility("default"))) ITzModule* _ITzModule_Create(uint32_t hostSdkVersion,
                                                                               uint32_t* moduleSdkVersion,
                                                                               TzResult* result) {
    if (moduleSdkVersion) *moduleSdkVersion = kTzSdkVersion;
    ITzModule* module = nullptr;
    const TzResult created = tzGate([&] {
        if (!tzSdkCompatible(hostSdkVersion, kTzSdkVersion)) return kTzVersionMismatch;
        module = CTzPolymorph<tzsvg::CTzThisModule, ITzModule>::create().detach();
        return kTzOk;
    });
    if (result) *result = created;
    return module;
}
