// CTzUser_ wrappers: host interfaces as a module's code uses them. A counted pointer, the calls that are
// used, standard-library types in and out, and failures as CTzError. Free to copy.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "hostsdk/CTzPtr.h"
#include "hostsdk/CTzText.h"
#include "hostsdk/ITzHost.h"
#include "hostsdk/ITzLog.h"
#include "hostsdk/ITzMessages.h"
#include "hostsdk/ITzScene.h"
#include "hostsdk/ITzSceneLoader.h"

// What all wrappers share: the pointer, whether there is one, and access to the interface.
template <class Interface>
class CTzUser {
  public:
    CTzUser() = default;
    explicit CTzUser(CTzPtr<Interface> object) : object_(std::move(object)) {}

    explicit operator bool() const { return static_cast<bool>(object_); }
    const CTzPtr<Interface>& pointer() const { return object_; }

  protected:
    Interface* operator->() const {
        if (!object_) throw CTzError(kTzNotReady);
        return object_.get();
    }

  private:
    CTzPtr<Interface> object_;
};

// Reads an optional text: `read` gets a sink and returns a code; nothing when the code is kTzNotFound.
template <class Read>
std::optional<std::string> tzReadOptional(Read&& read) {
    std::string text;
    const TzResult result = read(tzSinkTo(text));
    if (result == kTzNotFound) return std::nullopt;
    tzCheck(result);
    return text;
}

class CTzUser_Host : public CTzUser<ITzHost> {
  public:
    using CTzUser::CTzUser;

    // A service of the host; throws kTzNoInterface when it has none of that kind.
    template <class Service>
    CTzPtr<Service> service() const {
        void* out = nullptr;
        tzCheck((*this)->service(Service::kId, &out));
        return tzHandedOut(static_cast<Service*>(out));
    }
};

class CTzUser_Messages : public CTzUser<ITzMessages> {
  public:
    using CTzUser::CTzUser;

    // Shows a message of a host message table; arguments[0] is argument 1.
    void post(std::string_view table, uint32_t code,
              std::initializer_list<std::string_view> arguments) const {
        std::vector<TzText> texts;
        for (const std::string_view argument : arguments) texts.push_back(tzText(argument));
        tzCheck((*this)->post(tzText(table), code, texts.data(), static_cast<uint32_t>(texts.size())));
    }
};

class CTzUser_Mesh : public CTzUser<ITzMesh> {
  public:
    using CTzUser::CTzUser;

    uint32_t addPoints(const TzPoint* points, uint32_t count) const {
        uint32_t first = 0;
        tzCheck((*this)->addPoints(points, count, &first));
        return first;
    }
    uint32_t addPolygon(TzTagId type, const uint32_t* points, uint32_t count) const {
        uint32_t polygon = 0;
        tzCheck((*this)->addPolygon(type, points, count, &polygon));
        return polygon;
    }
    void setPolygonTag(uint32_t polygon, TzTagId id, std::string_view text) const {
        tzCheck((*this)->setPolygonTag(polygon, id, tzText(text)));
    }

    // False, with the text unchanged, when the polygon has no such tag.
    bool polygonTag(uint32_t polygon, TzTagId id, std::string& text) const {
        const TzResult result = (*this)->polygonTag(polygon, id, tzSinkTo(text));
        if (result == kTzNotFound) return false;
        tzCheck(result);
        return true;
    }
    uint32_t pointCount() const {
        uint32_t count = 0;
        tzCheck((*this)->pointCount(&count));
        return count;
    }
    void points(uint32_t first, uint32_t count, TzPoint* out) const {
        tzCheck((*this)->points(first, count, out));
    }
    uint32_t polygonCount() const {
        uint32_t count = 0;
        tzCheck((*this)->polygonCount(&count));
        return count;
    }
    void polygonInfo(uint32_t polygon, TzTagId& type, uint32_t& vertexCount) const {
        tzCheck((*this)->polygonInfo(polygon, &type, &vertexCount));
    }
    void vertices(uint32_t polygon, uint32_t first, uint32_t count, uint32_t* out) const {
        tzCheck((*this)->vertices(polygon, first, count, out));
    }
    TzBox bounds() const {
        TzBox box{};
        tzCheck((*this)->bounds(&box));
        return box;
    }
};

class CTzUser_Item : public CTzUser<ITzItem> {
  public:
    using CTzUser::CTzUser;

    CTzUser_Mesh mesh() const { return CTzUser_Mesh(pointer().query<ITzMesh>()); }
    std::string name() const {
        std::string text;
        tzCheck((*this)->name(tzSinkTo(text)));
        return text;
    }
    std::string type() const {
        std::string text;
        tzCheck((*this)->type(tzSinkTo(text)));
        return text;
    }
    void setTag(TzTagId id, std::string_view text) const { tzCheck((*this)->setTag(id, tzText(text))); }
    std::optional<std::string> tag(TzTagId id) const {
        return tzReadOptional([&](TzTextSink sink) { return (*this)->tag(id, sink); });
    }
    void addPackage(std::string_view serverName) const { tzCheck((*this)->addPackage(tzText(serverName))); }
    void setChannel(std::string_view channel, std::string_view text) const {
        tzCheck((*this)->setChannel(tzText(channel), tzText(text)));
    }
    std::optional<std::string> channel(std::string_view name) const {
        return tzReadOptional([&](TzTextSink sink) { return (*this)->channel(tzText(name), sink); });
    }
};

class CTzUser_Scene : public CTzUser<ITzScene> {
  public:
    using CTzUser::CTzUser;

    CTzUser_Item createItem(std::string_view type, uint32_t& index) const {
        ITzItem* item = nullptr;
        tzCheck((*this)->createItem(tzText(type), &index, &item));
        return CTzUser_Item(tzHandedOut(item));
    }
    uint32_t itemCount() const {
        uint32_t count = 0;
        tzCheck((*this)->itemCount(&count));
        return count;
    }
    CTzUser_Item item(uint32_t index) const {
        ITzItem* item = nullptr;
        tzCheck((*this)->itemAt(index, &item));
        return CTzUser_Item(tzHandedOut(item));
    }
};

class CTzUser_Monitor : public CTzUser<ITzMonitor> {
  public:
    using CTzUser::CTzUser;

    void initialise(uint64_t stepCount) const { tzCheck((*this)->initialise(stepCount)); }

    // False when the user cancelled; any other failure throws.
    bool step(uint32_t steps) const {
        const TzResult result = (*this)->step(steps);
        if (result == kTzCancelled) return false;
        tzCheck(result);
        return true;
    }
};
