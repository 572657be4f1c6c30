#include "host/core/ServerTable.h"

#include <algorithm>

#include "hostsdk/CTzText.h"

namespace tzhost {

ServerDescription describe(const Server& server) {
    ServerDescription description;
    uint32_t count = 0;
    tzCheck(server.factory->interfaceCount(&count));
    for (uint32_t i = 0; i < count; ++i) {
        tzCheck(server.factory->interfaceAt(i, tzSinkTo(description.interfaces.emplace_back())));
    }
    const auto tags = server.factory.query<ITzServerTags>();
    if (!tags) return description;
    tzCheck(tags->tagCount(&count));
    for (uint32_t i = 0; i < count; ++i) {
        auto& [name, value] = description.tags.emplace_back();
        tzCheck(tags->tagAt(i, tzSinkTo(name), tzSinkTo(value)));
    }
    return description;
}

void ServerTable::add(std::string_view name, CTzPtr<ITzServerFactory> factory) {
    const std::lock_guard lock(mutex_);
    const bool taken = std::any_of(servers_.begin(), servers_.end(),
                                   [&](const Server& server) { return server.name == name; });
    if (taken) throw CTzError(kTzExists);
    servers_.push_back({std::string(name), std::move(factory)});
}

void ServerTable::spawn(std::string_view name, const char* interfaceId, void** out) const {
    tzCheck(factory(name)->spawn(interfaceId, out));
    // Success with a null interface counts as no interface.
    if (!*out) throw CTzError(kTzNoInterface);
}

std::vector<Server> ServerTable::servers() const {
    const std::lock_guard lock(mutex_);
    return servers_;
}

void ServerTable::forget() {
    std::vector<Server> servers;
    {
        const std::lock_guard lock(mutex_);
        servers.swap(servers_);
    }
    while (!servers.empty()) servers.pop_back();
}

CTzPtr<ITzServerFactory> ServerTable::factory(std::string_view name) const {
    const std::lock_guard lock(mutex_);
    for (const Server& server : servers_) {
        if (server.name == name) return server.factory;
    }
    throw CTzError(kTzNotFound);
}

}  // namespace tzhost
