// The implementation base of one-step image loaders: a loader overrides the two protected operations, which
// may throw; counting and queries come from CTzPolymorph.
#pragma once

#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzImageLoader.h"

class CTzImpl_Loader1 : public ITzImageLoader {
  public:
    TzResult recognise(TzLoadAccess* access) noexcept final {
        if (!access) return kTzInvalidArgument;
        return tzGate([&] {
            TzLoadAccess filled = *access;
            const TzResult result = recogniseFile(filled);
            if (!tzFailed(result)) *access = filled;
            return result;
        });
    }

    TzResult load(const TzLoadAccess* access, ITzImage** out) noexcept final {
        if (!out) return kTzInvalidArgument;
        *out = nullptr;
        if (!access) return kTzInvalidArgument;
        return tzGate([&] { *out = loadFile(*access).detach(); });
    }

  protected:
    CTzImpl_Loader1() = default;
    virtual ~CTzImpl_Loader1() = default;

    // Looks at the file and fills in the record, which reaches the host only with a success.
    virtual TzResult recogniseFile(TzLoadAccess& access) = 0;

    // Delivers the image; throws CTzError when it cannot.
    virtual CTzPtr<ITzImage> loadFile(const TzLoadAccess& access) = 0;
};
