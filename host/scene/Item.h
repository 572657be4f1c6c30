// The items of a scene. An item is a counted object; a mesh item has the mesh interface as well. The scene
// makes them; the scene file, the preview and the commands read their data directly.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/core/HostCore.h"
#include "host/scene/MeshData.h"
#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzPackage.h"
#include "hostsdk/ITzScene.h"

namespace tzhost {

struct ItemTag {
    TzTagId id;
    std::string text;
};

struct Channel {
    std::string name;
    std::string text;
};

struct ItemPackage {
    std::string name;
    // Empty when the package makes no instances.
    CTzPtr<ITzPackageInstance> instance;
};

// What an item holds.
struct ItemData {
    std::string type;
    std::string name;
    std::vector<ItemTag> tags;  // in the order of their creation
    std::vector<ItemPackage> packages;
    std::vector<Channel> channels;  // of all packages, in the order in which they came
    MeshData mesh;                  // stays empty when the item is no mesh item

    bool isMesh() const { return type == kTzItemMesh; }
};

class Item : public HostObject, public ITzItem {
  public:
    TzResult name(TzTextSink sink) noexcept override;
    TzResult type(TzTextSink sink) noexcept override;
    TzResult setTag(TzTagId id, TzText text) noexcept override;
    TzResult tag(TzTagId id, TzTextSink sink) noexcept override;
    TzResult addPackage(TzText serverName) noexcept override;
    TzResult setChannel(TzText channel, TzText text) noexcept override;
    TzResult channel(TzText channel, TzTextSink sink) noexcept override;

    // ---- For the host. Failures throw CTzError, as the operations above answer them. ----

    const ItemData& data() const { return data_; }
    MeshData& mesh() { return data_.mesh; }
    void attachPackage(std::string_view serverName);
    void putChannel(std::string_view name, std::string_view text);

  protected:
    Item(std::shared_ptr<HostCore> core, ItemData data)
        : HostObject(std::move(core), "item"), data_(std::move(data)) {}
    ~Item() = default;

    ItemData data_;

  private:
    Channel& findChannel(std::string_view name);
};

class MeshItem : public Item, public ITzMesh {
  public:
    TzResult addPoints(const TzPoint* points, uint32_t count, uint32_t* first) noexcept override;
    TzResult addPolygon(TzTagId type, const uint32_t* points, uint32_t count,
                        uint32_t* polygon) noexcept override;
    TzResult setPolygonTag(uint32_t polygon, TzTagId id, TzText text) noexcept override;
    TzResult polygonTag(uint32_t polygon, TzTagId id, TzTextSink sink) noexcept override;
    TzResult pointCount(uint32_t* count) noexcept override;
    TzResult points(uint32_t first, uint32_t count, TzPoint* out) noexcept override;
    TzResult polygonCount(uint32_t* count) noexcept override;
    TzResult polygonInfo(uint32_t polygon, TzTagId* type, uint32_t* vertexCount) noexcept override;
    TzResult vertices(uint32_t polygon, uint32_t first, uint32_t count, uint32_t* out) noexcept override;
    TzResult bounds(TzBox* box) noexcept override;

  protected:
    using Item::Item;
    ~MeshItem() = default;
};

// Makes an item, with the mesh interface when its type is the mesh type.
CTzPtr<Item> makeItem(const std::shared_ptr<HostCore>& core, ItemData data);

}  // namespace tzhost
