// What a module sees of its host: the host object with its services, and the registry of servers.
#pragma once

#include "hostsdk/ITzObject.h"

// The host. Handed to the module when it is initialised; a module may keep it until shutdown.
class ITzHost : public ITzObject {
  public:
    static constexpr char kId[] = "tz.host/1";

    // Finds a service of the host by the service interface's `kId`: ITzServerRegistry, ITzLogService, and so
    // on. kTzNoInterface when this host does not offer it. [any thread]
    virtual TzResult service(const char* interfaceId, void** out) noexcept = 0;

  protected:
    ~ITzHost() = default;
};

// A factory of one server: makes its instances.
class ITzServerFactory : public ITzObject {
  public:
    static constexpr char kId[] = "tz.server.factory/1";

    // Creates a new object of the server's class and hands out the interface asked for, counted.
    // kTzNoInterface when the class does not have it (no object is made then). Which threads may call is
    // the server's own matter: [host thread], unless its tag "loader.threadsafe" is "Yes".
    virtual TzResult spawn(const char* interfaceId, void** out) noexcept = 0;

    // The number of interfaces attached to the server, and the `kId` of interface i in table order.
    // kTzOutOfBounds beyond the last. [any thread]
    virtual TzResult interfaceCount(uint32_t* count) noexcept = 0;
    virtual TzResult interfaceAt(uint32_t index, TzTextSink id) noexcept = 0;

  protected:
    ~ITzServerFactory() = default;
};

// The tags of a server, (name, value) pairs in a fixed order. Asked of the factory; a server without tags
// has no such interface.
class ITzServerTags : public ITzObject {
  public:
    static constexpr char kId[] = "tz.server.tags/1";

    // The number of tags. [any thread]
    virtual TzResult tagCount(uint32_t* count) noexcept = 0;

    // Name and value of tag i in table order. Beyond the last: kTzOutOfBounds, nothing written. [any thread]
    virtual TzResult tagAt(uint32_t index, TzTextSink name, TzTextSink value) noexcept = 0;

  protected:
    ~ITzServerTags() = default;
};

// Service: the host's table of servers.
class ITzServerRegistry : public ITzObject {
  public:
    static constexpr char kId[] = "tz.server.registry/1";

    // Adds a server under a name; the registry keeps a reference to the factory until the module is unloaded.
    // kTzExists when the name is taken (the first registration stays). Also called later than at
    // initialisation, by servers that bring others with them. [any thread]
    virtual TzResult addServer(TzText name, ITzServerFactory* factory) noexcept = 0;

    // Spawns an instance of the server of that name. kTzNotFound when there is none, else as
    // ITzServerFactory::spawn. [any thread, as far as the server allows it]
    virtual TzResult spawn(TzText name, const char* interfaceId, void** out) noexcept = 0;

  protected:
    ~ITzServerRegistry() = default;
};
