// Services of the host for modules that make images: the image service, the type service and the thread
// service. Asked of ITzHost::service().
#pragma once

#include "hostsdk/ITzImage.h"

// Service: makes images in the host's memory.
class ITzImageService : public ITzObject {
  public:
    static constexpr char kId[] = "tz.imageService/1";

    // Makes an image of that size and format with all values 0; it answers query() for ITzImageWriter.
    // kTzInvalidArgument for a side of 0 pixels, kTzNotSupported for a format that the host does not keep,
    // kTzOutOfMemory when there is no room. [any thread]
    virtual TzResult createImage(TzSize size, TzPixelFormat format, ITzImage** out) noexcept = 0;

  protected:
    ~ITzImageService() = default;
};

// Service: the codes of the host's types.
class ITzTypeService : public ITzObject {
  public:
    static constexpr char kId[] = "tz.typeService/1";

    // The code of the type of that name ("image"). kTzNotFound when the host has no such type. [any thread]
    virtual TzResult typeCode(TzText name, uint32_t* code) noexcept = 0;

  protected:
    ~ITzTypeService() = default;
};

// A lock. Not recursive: the thread that holds it does not lock it again.
class ITzThreadMutex : public ITzObject {
  public:
    static constexpr char kId[] = "tz.threadMutex/1";

    // Waits until the lock is free and takes it; frees it, on the thread that took it. What a thread did
    // before unlock() is seen by the next one after its lock(). [any thread]
    virtual TzResult lock() noexcept = 0;
    virtual TzResult unlock() noexcept = 0;

  protected:
    ~ITzThreadMutex() = default;
};

// A count of the threads that are in a piece of work. Keeps nobody out: a thread that finds others there
// decides for itself.
class ITzThreadGuard : public ITzObject {
  public:
    static constexpr char kId[] = "tz.threadGuard/1";

    // One thread more: *count is the number of threads inside, the caller included. [any thread]
    virtual TzResult enter(uint32_t* count) noexcept = 0;

    // One thread less; follows each enter() that succeeded. [any thread]
    virtual TzResult leave() noexcept = 0;

  protected:
    ~ITzThreadGuard() = default;
};

// Service: locks and guards.
class ITzThreadService : public ITzObject {
  public:
    static constexpr char kId[] = "tz.threadService/1";

    // Makes a lock that is free; makes a guard with nobody inside. [any thread]
    virtual TzResult createMutex(ITzThreadMutex** out) noexcept = 0;
    virtual TzResult createGuard(ITzThreadGuard** out) noexcept = 0;

  protected:
    ~ITzThreadService() = default;
};
