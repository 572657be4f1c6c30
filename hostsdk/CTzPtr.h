// A counted pointer to an interface. adopt() takes over a reference that the caller owns (what comes out of
// a call); share() adds one of its own.
#pragma once

#include <utility>

#include "hostsdk/CTzError.h"
#include "hostsdk/ITzObject.h"

template <class Interface>
class CTzPtr {
  public:
    CTzPtr() = default;
    CTzPtr(const CTzPtr& other) : object_(other.object_) {
        if (object_) object_->retain();
    }
    CTzPtr(CTzPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    CTzPtr& operator=(CTzPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~CTzPtr() {
        // The analyzer does not follow atomic counts: it takes the release of one of two references for the
        // last.
        if (object_) object_->release();  // NOLINT(clang-analyzer-cplusplus.NewDelete)
    }

    static CTzPtr adopt(Interface* object) {
        CTzPtr pointer;
        pointer.object_ = object;
        return pointer;
    }
    static CTzPtr share(Interface* object) {
        if (object) object->retain();
        return adopt(object);
    }

    // Another interface of the same object; empty when it has none of that kind.
    template <class Other>
    CTzPtr<Other> query() const {
        void* out = nullptr;
        if (!object_ || tzFailed(object_->query(Other::kId, &out))) return {};
        return CTzPtr<Other>::adopt(static_cast<Other*>(out));
    }

    // Gives the reference to the caller, as an out-pointer of an operation does.
    Interface* detach() { return std::exchange(object_, nullptr); }

    Interface* get() const { return object_; }
    Interface* operator->() const { return object_; }
    Interface& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

  private:
    Interface* object_ = nullptr;
};

// What a call of the other side handed out, owned from here on. A call that succeeds and hands out nothing
// breaks its contract: throws CTzError(kTzFailed), so that the null goes no further.
template <class Interface>
CTzPtr<Interface> tzHandedOut(Interface* object) {
    if (!object) throw CTzError(kTzFailed);
    return CTzPtr<Interface>::adopt(object);
}
