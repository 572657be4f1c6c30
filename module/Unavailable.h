// Servers that are registered but have no working operations yet: they refuse with a code.
#pragma once

#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzHost.h"
#include "hostsdk/ITzImageLoader.h"
#include "hostsdk/ITzSceneSaver.h"

namespace tzsvg {

class SVGSaver : public ITzSceneSaver {
  public:
    explicit SVGSaver(const CTzPtr<ITzHost>&) {}
    TzResult verify(ITzScene*) noexcept override { return kTzNotSupported; }
    TzResult save(TzText, ITzScene*, uint32_t) noexcept override { return kTzNotSupported; }
};

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
