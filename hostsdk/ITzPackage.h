// Packages: sets of channels that a server adds to an item. The host asks the server for the channels and
// keeps their values on the item; the package keeps none.
#pragma once

#include "hostsdk/ITzScene.h"

constexpr char kTzChannelString[] = "string";  // the channel type of UTF-8 text

class ITzPackage : public ITzObject {
  public:
    static constexpr char kId[] = "tz.package/1";

    // The number of channels the package adds, and name and type of channel i in order. kTzOutOfBounds beyond
    // the last. [host thread]
    virtual TzResult channelCount(uint32_t* count) noexcept = 0;
    virtual TzResult channelAt(uint32_t index, TzTextSink name, TzTextSink type) noexcept = 0;

  protected:
    ~ITzPackage() = default;
};

// One package on one item. Held by the item for as long as it has the package.
class ITzPackageInstance : public ITzObject {
  public:
    static constexpr char kId[] = "tz.packageInstance/1";

    // The server name of the package. [host thread]
    virtual TzResult packageName(TzTextSink name) noexcept = 0;

  protected:
    ~ITzPackageInstance() = default;
};

// Support for instances: asked of the package by query().
class ITzPackageInstances : public ITzObject {
  public:
    static constexpr char kId[] = "tz.packageInstances/1";

    // Makes the instance for one item. The instance does not keep the item. [host thread]
    virtual TzResult createInstance(ITzItem* item, ITzPackageInstance** instance) noexcept = 0;

  protected:
    ~ITzPackageInstances() = default;
};
