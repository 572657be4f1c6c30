// The package server as a host uses it: its channels, its instances, and what it answers to a wrong call.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hostsdk/CTzPolymorph.h"
#include "import/SVGLoaderPackage.h"

namespace tzsvg {
namespace {

// The package by either of its interfaces.
using Package = CTzPolymorph<SVGLoaderPackage, ITzPackage, ITzPackageInstances>;
using Instances = CTzPolymorph<SVGLoaderPackage, ITzPackageInstances, ITzPackage>;

// An item that is never called, and tells when it is gone.
class SomeItem : public ITzItem {
  public:
    explicit SomeItem(bool& gone) : gone_(gone) {}
    ~SomeItem() { gone_ = true; }

    TzResult name(TzTextSink) noexcept override { return kTzFailed; }
    TzResult type(TzTextSink) noexcept override { return kTzFailed; }
    TzResult setTag(TzTagId, TzText) noexcept override { return kTzFailed; }
    TzResult tag(TzTagId, TzTextSink) noexcept override { return kTzFailed; }
    TzResult addPackage(TzText) noexcept override { return kTzFailed; }
    TzResult setChannel(TzText, TzText) noexcept override { return kTzFailed; }
    TzResult channel(TzText, TzTextSink) noexcept override { return kTzFailed; }

  private:
    bool& gone_;
};

TEST(Package, channelsInOrder) {
    const auto package = Package::create(CTzPtr<ITzHost>());
    uint32_t count = 0;
    ASSERT_EQ(package->channelCount(&count), kTzOk);
    std::vector<std::string> names;
    for (uint32_t i = 0; i < count; ++i) {
        std::string name;
        std::string type;
        ASSERT_EQ(package->channelAt(i, tzSinkTo(name), tzSinkTo(type)), kTzOk);
        EXPECT_EQ(type, "string") << name;
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"svgdefs", "clipdefs", "groupdefs", "svgdoctype", "svgrootdef",
                                               "svgillustratorcdata"}));
}

TEST(Package, instances) {
    const auto instances = Instances::create(CTzPtr<ITzHost>());
    bool gone = false;
    auto item = CTzPolymorph<SomeItem, ITzItem>::create(gone);
    ITzPackageInstance* made = nullptr;
    ASSERT_EQ(instances->createInstance(item.get(), &made), kTzOk);
    const auto instance = CTzPtr<ITzPackageInstance>::adopt(made);
    std::string name;
    EXPECT_EQ(instance->packageName(tzSinkTo(name)), kTzOk);
    EXPECT_EQ(name, "svgloader.package");
    item = {};
    EXPECT_TRUE(gone) << "the instance keeps the item";
}

TEST(Package, wrongCalls) {
    const auto package = Package::create(CTzPtr<ITzHost>());
    std::string text = "untouched";
    for (const uint32_t index : {6U, 0xFFFFFFFFU}) {
        EXPECT_EQ(package->channelAt(index, tzSinkTo(text), tzSinkTo(text)), kTzOutOfBounds) << index;
    }
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(package->channelCount(nullptr), kTzInvalidArgument);

    // A sink's own failure is the operation's.
    const TzTextSink full{nullptr, [](void*, TzText) noexcept { return kTzOutOfMemory; }};
    EXPECT_EQ(package->channelAt(0, full, full), kTzOutOfMemory);

    const auto instances = Instances::create(CTzPtr<ITzHost>());
    bool gone = false;
    const auto item = CTzPolymorph<SomeItem, ITzItem>::create(gone);
    EXPECT_EQ(instances->createInstance(item.get(), nullptr), kTzInvalidArgument);
    ITzPackageInstance* made = nullptr;
    EXPECT_EQ(instances->createInstance(nullptr, &made), kTzInvalidArgument);
    EXPECT_EQ(made, nullptr);
}

}  // namespace
}  // namespace tzsvg
