#include "import/SVGLoaderPackage.h"

#include <array>

#include "hostsdk/CTzPolymorph.h"
#include "svg/RoundTripNames.h"

namespace tzsvg {
namespace {

constexpr std::array<const char*, 6> kChannels = {
    kChannelDefinitions, kChannelClipPaths, kChannelGroups,
    kChannelDoctype,     kChannelRoot,      kChannelIllustrator,
};

}  // namespace

TzResult SVGLoaderPackage::channelCount(uint32_t* count) noexcept {
    if (!count) return kTzInvalidArgument;
    *count = kChannels.size();
    return kTzOk;
}

TzResult SVGLoaderPackage::channelAt(uint32_t index, TzTextSink name, TzTextSink type) noexcept {
    if (index >= kChannels.size()) return kTzOutOfBounds;
    return tzGate([&] {
        tzWrite(name, kChannels[index]);
        tzWrite(type, kTzChannelString);
    });
}

TzResult SVGLoaderPackage::createInstance(ITzItem* item, ITzPackageInstance** instance) noexcept {
    if (!instance) return kTzInvalidArgument;
    *instance = nullptr;
    if (!item) return kTzInvalidArgument;
    return tzGate(
        [&] { *instance = CTzPolymorph<SVGLoaderPackageInstance, ITzPackageInstance>::create().detach(); });
}

TzResult SVGLoaderPackageInstance::packageName(TzTextSink name) noexcept {
    return tzGate([&] { tzWrite(name, kPackageName); });
}

}  // namespace tzsvg
