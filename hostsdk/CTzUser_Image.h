// CTzUser_ wrappers for images and for the services that image modules use.
#pragma once

#include <utility>

#include "hostsdk/CTzUser.h"
#include "hostsdk/ITzImage.h"
#include "hostsdk/ITzServices.h"

class CTzUser_Image : public CTzUser<ITzImage> {
  public:
    using CTzUser::CTzUser;

    TzSize size() const {
        TzSize size{};
        tzCheck((*this)->size(&size));
        return size;
    }
    TzPixelFormat format() const {
        TzPixelFormat format = 0;
        tzCheck((*this)->format(&format));
        return format;
    }
    void readPixel(uint32_t x, uint32_t y, TzPixelType type, void* out) const {
        tzCheck((*this)->readPixel(x, y, type, out));
    }
    void readLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) const {
        tzCheck((*this)->readLine(x, y, count, type, out));
    }
};

class CTzUser_ImageWriter : public CTzUser<ITzImageWriter> {
  public:
    using CTzUser::CTzUser;

    void writeRows(uint32_t x, uint32_t y, TzSize rectangle, TzPixelType type, const void* pixels,
                   uint64_t byteCount) const {
        tzCheck((*this)->writeRows(x, y, rectangle, type, pixels, byteCount));
    }
};

class CTzUser_ImageService : public CTzUser<ITzImageService> {
  public:
    using CTzUser::CTzUser;

    CTzUser_Image createImage(TzSize size, TzPixelFormat format) const {
        ITzImage* image = nullptr;
        tzCheck((*this)->createImage(size, format, &image));
        return CTzUser_Image(tzHandedOut(image));
    }
};

class CTzUser_TypeService : public CTzUser<ITzTypeService> {
  public:
    using CTzUser::CTzUser;

    uint32_t typeCode(std::string_view name) const {
        uint32_t code = 0;
        tzCheck((*this)->typeCode(tzText(name), &code));
        return code;
    }
};

// Works with std::lock_guard and std::unique_lock.
class CTzUser_ThreadMutex : public CTzUser<ITzThreadMutex> {
  public:
    using CTzUser::CTzUser;

    // Throws CTzError when the host cannot lock; nothing is held then.
    void lock() const { tzCheck((*this)->lock()); }
    // A failure has nowhere to go: the lock was held, or lock() would have thrown.
    void unlock() const noexcept { pointer()->unlock(); }
};

// The number of threads in a piece of work: Visit is one thread's time inside.
class CTzUser_ThreadGuard : public CTzUser<ITzThreadGuard> {
  public:
    using CTzUser::CTzUser;

    class Visit {
      public:
        explicit Visit(const CTzUser_ThreadGuard& guard) : guard_(guard) { tzCheck(guard_->enter(&count_)); }
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;
        ~Visit() { guard_->leave(); }

        // The number of threads inside when this one came, itself included.
        uint32_t count() const { return count_; }

      private:
        const CTzUser_ThreadGuard& guard_;
        uint32_t count_ = 0;
    };
};

class CTzUser_ThreadService : public CTzUser<ITzThreadService> {
  public:
    using CTzUser::CTzUser;

    CTzUser_ThreadMutex createMutex() const {
        ITzThreadMutex* mutex = nullptr;
        tzCheck((*this)->createMutex(&mutex));
        return CTzUser_ThreadMutex(tzHandedOut(mutex));
    }
    CTzUser_ThreadGuard createGuard() const {
        ITzThreadGuard* guard = nullptr;
        tzCheck((*this)->createGuard(&guard));
        return CTzUser_ThreadGuard(tzHandedOut(guard));
    }
};
