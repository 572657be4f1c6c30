// The root of every interface: identity, lifetime, and the way from one interface of an object to another.
//
// Conventions of all interfaces:
//  - Pure abstract, single inheritance, no virtual destructor, no overloads, every operation noexcept.
//  - An interface class names itself by `kId`, "name/version". A published interface is frozen; growth is a
//    new interface with the next version.
//  - Operations return result codes. Results go through out-pointers, which must not be null; an interface
//    pointer that comes out is counted for the caller, and null on failure.
//  - Pointers that go in are borrowed for the call; who keeps one retains it.
//  - Each operation ends with a thread tag. [host thread]: only on the thread on which the host initialised
//    the module. [any thread]: from any thread, at any time, also at once.
#pragma once

#include "hostsdk/TzTypes.h"

class ITzObject {
  public:
    static constexpr char kId[] = "tz.object/1";

    // Finds another interface of this object by its `kId`. Asking for ITzObject::kId always gives the same
    // pointer for the same object. kTzNoInterface when the object has none of that name. [any thread]
    virtual TzResult query(const char* interfaceId, void** out) noexcept = 0;

    // Adds a reference; returns the number of references there are now. [any thread]
    virtual uint32_t retain() noexcept = 0;

    // Drops a reference; returns exactly how many are left. At 0 the object is gone. A holder that reads 1
    // after its own retain and release knows that it is alone. [any thread]
    virtual uint32_t release() noexcept = 0;

  protected:
    ~ITzObject() = default;  // objects end by release()
};
