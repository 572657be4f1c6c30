// The package server "svgloader.package": adds the six string channels that keep what a mesh cannot hold to
// an item. The host holds the values.
#pragma once

#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzHost.h"
#include "hostsdk/ITzPackage.h"

namespace tzsvg {

class SVGLoaderPackage : public ITzPackage, public ITzPackageInstances {
  public:
    explicit SVGLoaderPackage(const CTzPtr<ITzHost>&) {}

    TzResult channelCount(uint32_t* count) noexcept override;
    TzResult channelAt(uint32_t index, TzTextSink name, TzTextSink type) noexcept override;
    TzResult createInstance(ITzItem* item, ITzPackageInstance** instance) noexcept override;
};

class SVGLoaderPackageInstance : public ITzPackageInstance {
  public:
    TzResult packageName(TzTextSink name) noexcept override;
};

}  // namespace tzsvg
