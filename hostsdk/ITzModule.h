// A module and its one exported entry.
#pragma once

#include "hostsdk/ITzHost.h"

// The module object: created by the entry, initialised once, shut down once, then released.
class ITzModule : public ITzObject {
  public:
    static constexpr char kId[] = "tz.module/1";

    // Registers the module's servers with the host. Called once, before anything else. On failure the host
    // forgets what was registered and unloads the module. [host thread]
    virtual TzResult initialise(ITzHost* host) noexcept = 0;

    // Lets go of the host. Called when every object of the module's servers has been released; the module
    // object is released next, the library closed last. [host thread]
    virtual TzResult shutdown() noexcept = 0;

  protected:
    ~ITzModule() = default;
};

// The type of the entry that a module exports as `_ITzModule_Create`. The host passes the SDK version it
// was built with; the module stores its own in *moduleSdkVersion and, when tzSdkCompatible() holds for the
// two, returns its module object, counted. Otherwise, or when it cannot be made, the answer is null and
// *result says why. The host applies the same rule to the version it got, and calls nothing on the object
// when it does not hold. [host thread]
extern "C" {
using TzModuleEntry = ITzModule* (*)(uint32_t hostSdkVersion, uint32_t* moduleSdkVersion, TzResult* result);
}

constexpr char kTzModuleEntryName[] = "_ITzModule_Create";
