// Servers that are registered but have no working operations yet: they refuse with a code.
#pragma once

#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzHost.h"
#include "hostsdk/ITzImageLoader.h"

namespace tzsvg {

class CSVGImageLoader : public ITzImageLoader {
  public:
    explicit CSVGImageLoader(const CTzPtr<ITzHost>&) {}
    TzResult recognise(TzLoadAccess*) noexcept override { return kTzNotSupported; }
    TzResult load(const TzLoadAccess*, ITzImage** out) noexcept override {
        if (out) *out = nullptr;
        return kTzNotSupported;
    }
};

}  // namespace tzsvg
