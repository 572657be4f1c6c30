// CTzUser_ wrappers: host interfaces as a module's code uses them. A counted pointer, the calls that are
// used, standard-library types in and out, and failures as CTzError. Free to copy.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "hostsdk/CTzPtr.h"
#include "hostsdk/CTzText.h"
#include "hostsdk/ITzHost.h"
#include "hostsdk/ITzLog.h"
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
        return CTzPtr<Service>::adopt(static_cast<Service*>(out));
    }
};

class CTzUser_Mesh : public CTzUser<ITzMesh> {
  public:
    using CTzUser::CTzUser;

    uint32_t addPoint(const TzPoint& point) const {
        uint32_t index = 0;
        tzCheck((*this)->addPoints(&point, 1, &index));
        return index;
    }
    uint32_t addPolygon(TzTagId type, const uint32_t* points, uint32_t count) const {
        uint32_t polygon = 0;
        tzCheck((*this)->addPolygon(type, points, count, &polygon));
        return polygon;
    }
    void setPolygonTag(uint32_t polygon, TzTagId id, std::string_view text) const {
        tzCheck((*this)->setPolygonTag(polygon, id, tzText(text)));
    }
};

class CTzUser_Item : public CTzUser<ITzItem> {
  public:
    using CTzUser::CTzUser;

    CTzUser_Mesh mesh() const { return CTzUser_Mesh(pointer().query<ITzMesh>()); }
    void setTag(TzTagId id, std::string_view text) const { tzCheck((*this)->setTag(id, tzText(text))); }
    void addPackage(std::string_view serverName) const { tzCheck((*this)->addPackage(tzText(serverName))); }
    void setChannel(std::string_view channel, std::string_view text) const {
        tzCheck((*this)->setChannel(tzText(channel), tzText(text)));
    }
};

class CTzUser_Scene : public CTzUser<ITzScene> {
  public:
    using CTzUser::CTzUser;

    CTzUser_Item createItem(std::string_view type, uint32_t& index) const {
        ITzItem* item = nullptr;
        tzCheck((*this)->createItem(tzText(type), &index, &item));
        return CTzUser_Item(CTzPtr<ITzItem>::adopt(item));
    }
    CTzUser_Item item(uint32_t index) const {
        ITzItem* item = nullptr;
        tzCheck((*this)->itemAt(index, &item));
        return CTzUser_Item(CTzPtr<ITzItem>::adopt(item));
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
