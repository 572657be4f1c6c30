// minimal-host MODULE IN OUT: a host that opens a module, imports a file into a scene, and exports it again.
// Inside it failures are exceptions; where a module has called, tzGate() makes codes of them.
#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <map>

#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser.h"
#include "hostsdk/ITzModule.h"
#include "hostsdk/ITzPackage.h"
#include "hostsdk/ITzSceneSaver.h"

// The host with what an import and an export need of it: no messages, which nobody would read here.
class Host : public ITzHost, public ITzServerRegistry, public ITzLogService, public ITzLogWriter {
  public:
    TzResult service(const char* id, void** out) noexcept override {
        return static_cast<ITzHost*>(this)->query(id, out);
    }
    TzResult addServer(TzText name, ITzServerFactory* factory) noexcept override {
        return tzGate([&] {
            const auto shared = CTzPtr<ITzServerFactory>::share(factory);
            return servers_.emplace(tzView(name), shared).second ? kTzOk : kTzExists;
        });
    }
    TzResult spawn(TzText name, const char* interfaceId, void** out) noexcept override {
        return tzGate([&] {
            const auto found = servers_.find(std::string(tzView(name)));
            return found == servers_.end() ? kTzNotFound : found->second->spawn(interfaceId, out);
        });
    }
    // What is logged is dropped.
    TzResult openEntry(TzText, TzText, TzText, TzText, uint32_t* entry) noexcept override {
        return tzGate([&] { *entry = 0; });
    }
    TzResult append(uint32_t, TzText, TzText) noexcept override { return kTzOk; }
    // An instance of the first server that has that interface.
    template <class Interface>
    CTzPtr<Interface> first() {
        void* out = nullptr;
        for (const auto& server : servers_)
            if (!tzFailed(server.second->spawn(Interface::kId, &out))) break;
        return tzHandedOut(static_cast<Interface*>(out));
    }
    void forgetServers() { servers_.clear(); }

  private:
    std::map<std::string, CTzPtr<ITzServerFactory>> servers_;
};

// What modules ask of lists and of texts by key.
template <class List>
TzResult countOf(const List& list, uint32_t* count) {
    return tzGate([&] { *count = static_cast<uint32_t>(list.size()); });
}
template <class T>
TzResult copy(const std::vector<T>& list, uint32_t first, uint32_t count, T* out) {
    if (first > list.size() || count > list.size() - first) return kTzOutOfBounds;
    return tzGate([&] { std::copy_n(list.begin() + first, count, out); });
}
template <class Key>
TzResult readText(const std::map<Key, std::string>& texts, const Key& key, TzTextSink sink) {
    const auto found = texts.find(key);
    return found == texts.end() ? kTzNotFound : sink.write(sink.context, tzText(found->second));
}

class Item : public ITzItem, public ITzMesh {
  public:
    Item(ITzServerRegistry& servers, TzText type) : servers_(servers), type_(tzView(type)) {}

    TzResult name(TzTextSink sink) noexcept override { return type(sink); }
    TzResult type(TzTextSink sink) noexcept override { return sink.write(sink.context, tzText(type_)); }
    TzResult setTag(TzTagId id, TzText text) noexcept override {
        return tzGate([&] { tags_[id] = tzView(text); });
    }
    TzResult tag(TzTagId id, TzTextSink sink) noexcept override { return readText(tags_, id, sink); }
    TzResult addPackage(TzText server) noexcept override {
        return tzGate([&] {
            void* out = nullptr;
            tzCheck(servers_.spawn(server, ITzPackage::kId, &out));
            const auto package = CTzPtr<ITzPackage>::adopt(static_cast<ITzPackage*>(out));
            std::string name, type;
            for (uint32_t i = 0; !tzFailed(package->channelAt(i, tzSinkTo(name), tzSinkTo(type))); ++i)
                channels_.emplace(name, "");
        });
    }
    TzResult setChannel(TzText name, TzText text) noexcept override {
        return tzGate([&] { channels_.at(std::string(tzView(name))) = tzView(text); });
    }
    TzResult channel(TzText name, TzTextSink sink) noexcept override {
        return tzGate([&] { return readText(channels_, std::string(tzView(name)), sink); });
    }
    TzResult addPoints(const TzPoint* points, uint32_t count, uint32_t* first) noexcept override {
        *first = static_cast<uint32_t>(points_.size());
        return tzGate([&] { points_.insert(points_.end(), points, points + count); });
    }
    TzResult addPolygon(TzTagId type, const uint32_t* at, uint32_t count, uint32_t* index) noexcept override {
        *index = static_cast<uint32_t>(polygons_.size());
        return tzGate([&] { polygons_.push_back({type, {at, at + count}, {}}); });
    }
    TzResult setPolygonTag(uint32_t index, TzTagId id, TzText text) noexcept override {
        return tzGate([&] { polygons_.at(index).tags[id] = tzView(text); });
    }
    TzResult polygonTag(uint32_t index, TzTagId id, TzTextSink sink) noexcept override {
        return tzGate([&] { return readText(polygons_.at(index).tags, id, sink); });
    }
    TzResult pointCount(uint32_t* count) noexcept override { return countOf(points_, count); }
    TzResult points(uint32_t first, uint32_t count, TzPoint* out) noexcept override {
        return copy(points_, first, count, out);
    }
    TzResult polygonCount(uint32_t* count) noexcept override { return countOf(polygons_, count); }
    TzResult polygonInfo(uint32_t index, TzTagId* type, uint32_t* vertexCount) noexcept override {
        if (index >= polygons_.size()) return kTzOutOfBounds;
        *type = polygons_[index].type;
        return countOf(polygons_[index].vertices, vertexCount);
    }
    TzResult vertices(uint32_t index, uint32_t first, uint32_t count, uint32_t* out) noexcept override {
        return index < polygons_.size() ? copy(polygons_[index].vertices, first, count, out) : kTzOutOfBounds;
    }
    TzResult bounds(TzBox* box) noexcept override {
        const TzPoint first = points_.empty() ? TzPoint{} : points_.front();
        TzPoint low = first, high = first;
        for (const TzPoint& p : points_) {
            low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
        }
        *box = {low, high, {high.x - low.x, high.y - low.y, high.z - low.z}};
        return kTzOk;
    }

  private:
    struct Polygon {
        TzTagId type;
        std::vector<uint32_t> vertices;
        std::map<TzTagId, std::string> tags;
    };
    ITzServerRegistry& servers_;
    std::string type_;
    std::map<TzTagId, std::string> tags_;
    std::map<std::string, std::string> channels_;
    std::vector<TzPoint> points_;
    std::vector<Polygon> polygons_;
};

class Scene : public ITzScene {
  public:
    explicit Scene(ITzServerRegistry& servers) : servers_(servers) {}
    TzResult createItem(TzText type, uint32_t* index, ITzItem** item) noexcept override {
        return tzGate([&] {
            *index = static_cast<uint32_t>(items_.size());
            items_.push_back(CTzPolymorph<Item, ITzItem, ITzMesh>::create(servers_, type));
            *item = CTzPtr<ITzItem>(items_.back()).detach();
        });
    }
    TzResult itemCount(uint32_t* count) noexcept override { return countOf(items_, count); }
    TzResult itemAt(uint32_t index, ITzItem** item) noexcept override {
        *item = index < items_.size() ? CTzPtr<ITzItem>(items_[index]).detach() : nullptr;
        return *item ? kTzOk : kTzOutOfBounds;
    }

  private:
    ITzServerRegistry& servers_;
    std::vector<CTzPtr<ITzItem>> items_;
};

void importAndExport(Host& host, const char* in, const char* out) {
    const auto scene = CTzPolymorph<Scene, ITzScene>::create(host);
    const auto loader = host.first<ITzSceneLoader>();
    tzCheck(loader->recognise(tzText(in)));
    tzCheck(loader->start(scene.get()));
    tzCheck(loader->load(nullptr));
    const auto saver = host.first<ITzSceneSaver>();
    tzCheck(saver->verify(scene.get()));
    tzCheck(saver->save(tzText(out), scene.get(), 0));
}

int main(int argc, char** argv) {
    void* const library = argc == 4 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    void* const entry = library ? dlsym(library, kTzModuleEntryName) : nullptr;
    if (!entry) return 2;
    const TzResult result = tzGate([&] {
        const auto host =
            CTzPolymorph<Host, ITzHost, ITzServerRegistry, ITzLogService, ITzLogWriter>::createSelf();
        uint32_t version = 0;
        TzResult done = kTzFailed;
        const auto module =
            CTzPtr<ITzModule>::adopt(reinterpret_cast<TzModuleEntry>(entry)(kTzSdkVersion, &version, &done));
        tzCheck(tzSdkCompatible(kTzSdkVersion, version) ? done : kTzVersionMismatch);
        tzCheck(module->initialise(static_cast<ITzHost*>(host.get())));
        done = tzGate([&] { importAndExport(*host, argv[2], argv[3]); });
        host->forgetServers();  // they hold the host, and the module is to let go of everything
        tzCheck(module->shutdown());
        return done;
    });
    dlclose(library);
    if (tzFailed(result)) std::fprintf(stderr, "%s: 0x%08x (%s)\n", argv[2], result, tzResultText(result));
    return tzFailed(result) ? 1 : 0;
}
