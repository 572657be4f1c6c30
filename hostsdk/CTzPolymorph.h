// CTzPolymorph<T, Interfaces...> is the most derived class of T: it counts the references and answers query()
// for the interfaces attached to it. T derives from interfaces (through the implementation bases) and
// leaves both open, so that a class with three interfaces has one count. There is no other place that counts.
//
//     class Clock : public CTzImpl_Something, public CTzImpl_Other { ... };
//     CTzPtr<ITzSomething> clock = CTzPolymorph<Clock, ITzSomething, ITzOther>::create(arguments...);
//
// CTzPolymorph<T, Interfaces...>::factory(host, tags) makes the server factory of T: it spawns T(host).
#pragma once

#include <array>
#include <atomic>
#include <cstring>
#include <tuple>

#include "hostsdk/CTzPtr.h"
#include "hostsdk/CTzText.h"
#include "hostsdk/ITzHost.h"

// A row of a server's tag table; a row of two nulls ends the table. Static storage.
struct TzServerTag {
    const char* name;
    const char* value;
};

template <class T, class... Interfaces>
class CTzServerFactory;

template <class T, class... Interfaces>
class CTzPolymorph final : public T {
  public:
    using First = std::tuple_element_t<0, std::tuple<Interfaces...>>;

    // Makes an object with one reference, the caller's.
    template <class... Arguments>
    static CTzPtr<First> create(Arguments&&... arguments) {
        return CTzPtr<First>::adopt(make(std::forward<Arguments>(arguments)...));
    }

    // The same, as the class itself, for the side that made it.
    template <class... Arguments>
    static CTzPtr<CTzPolymorph> createSelf(Arguments&&... arguments) {
        return CTzPtr<CTzPolymorph>::adopt(make(std::forward<Arguments>(arguments)...));
    }

    // Makes the factory of the server whose instances are T(host). `tags` may be null: a server without tags.
    static CTzPtr<ITzServerFactory> factory(const CTzPtr<ITzHost>& host, const TzServerTag* tags) {
        using Factory = CTzServerFactory<T, Interfaces...>;
        if (tags) return CTzPolymorph<Factory, ITzServerFactory, ITzServerTags>::create(host, tags);
        return CTzPolymorph<Factory, ITzServerFactory>::create(host, tags);
    }

    TzResult query(const char* interfaceId, void** out) noexcept override {
        if (!out) return kTzInvalidArgument;
        *out = nullptr;
        if (!interfaceId) return kTzInvalidArgument;
        if (std::strcmp(interfaceId, ITzObject::kId) == 0) {
            *out = static_cast<ITzObject*>(static_cast<First*>(this));
        } else {
            ((std::strcmp(interfaceId, Interfaces::kId) == 0 ? void(*out = static_cast<Interfaces*>(this))
                                                             : void()),
             ...);
        }
        if (!*out) return kTzNoInterface;
        retain();
        return kTzOk;
    }

    uint32_t retain() noexcept override { return references_.fetch_add(1, std::memory_order_relaxed) + 1; }

    uint32_t release() noexcept override {
        const uint32_t left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) delete this;  // the counterpart of make()
        return left;
    }

  private:
    template <class... Arguments>
    static CTzPolymorph* make(Arguments&&... arguments) {
        return new CTzPolymorph(std::forward<Arguments>(arguments)...);  // its references own it
    }

    template <class... Arguments>
    explicit CTzPolymorph(Arguments&&... arguments) : T(std::forward<Arguments>(arguments)...) {}
    ~CTzPolymorph() = default;  // NOLINT(modernize-use-override): only some T have a virtual destructor

    std::atomic<uint32_t> references_{1};
};

// The factory of a server: keeps the host that its instances work with, and answers for the tag table.
template <class T, class... Interfaces>
class CTzServerFactory : public ITzServerFactory, public ITzServerTags {
  public:
    CTzServerFactory(CTzPtr<ITzHost> host, const TzServerTag* tags) : host_(std::move(host)), tags_(tags) {}

    TzResult spawn(const char* interfaceId, void** out) noexcept override {
        if (!out) return kTzInvalidArgument;
        *out = nullptr;
        if (!interfaceId) return kTzInvalidArgument;
        if (!offers(interfaceId)) return kTzNoInterface;
        return tzGate([&] { return CTzPolymorph<T, Interfaces...>::create(host_)->query(interfaceId, out); });
    }

    TzResult interfaceCount(uint32_t* count) noexcept override {
        if (!count) return kTzInvalidArgument;
        *count = sizeof...(Interfaces) + (tags_ ? 1 : 0);
        return kTzOk;
    }

    TzResult interfaceAt(uint32_t index, TzTextSink id) noexcept override {
        static constexpr std::array<const char*, sizeof...(Interfaces) + 1> kIds{Interfaces::kId...,
                                                                                 ITzServerTags::kId};
        if (index >= sizeof...(Interfaces) + (tags_ ? 1 : 0)) return kTzOutOfBounds;
        return tzGate([&] { tzWrite(id, kIds[index]); });
    }

    TzResult tagCount(uint32_t* count) noexcept override {
        if (!count) return kTzInvalidArgument;
        *count = rows();
        return kTzOk;
    }

    TzResult tagAt(uint32_t index, TzTextSink name, TzTextSink value) noexcept override {
        if (index >= rows()) return kTzOutOfBounds;
        return tzGate([&] {
            tzWrite(name, tags_[index].name);
            tzWrite(value, tags_[index].value);
        });
    }

  private:
    // Known before an instance is made: a host may ask every server there is.
    static bool offers(const char* interfaceId) {
        const auto is = [&](const char* id) { return std::strcmp(interfaceId, id) == 0; };
        return is(ITzObject::kId) || (is(Interfaces::kId) || ...);
    }

    uint32_t rows() const {
        uint32_t count = 0;
        while (tags_ && tags_[count].name) ++count;
        return count;
    }

    CTzPtr<ITzHost> host_;
    const TzServerTag* tags_;
};
