// The host's scene: items in the order of their creation. Given to loaders as ITzScene; filled by the scene
// file reader; read by the writer, the preview and the commands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/core/HostCore.h"
#include "host/scene/Item.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzScene.h"

namespace tzhost {

class Scene : public HostObject, public ITzScene {
  public:
    TzResult createItem(TzText type, uint32_t* index, ITzItem** item) noexcept override;
    TzResult itemCount(uint32_t* count) noexcept override;
    TzResult itemAt(uint32_t index, ITzItem** item) noexcept override;

    // ---- For the host ----

    const std::vector<CTzPtr<Item>>& items() const { return items_; }

    // The one of the host that made the scene.
    Observer& observer() const { return *core().observer; }

    // The name of the items that are created from here on: the base name of the file being imported. Empty:
    // an item is named after its type ("Mesh").
    void setNameHint(std::string_view name);

    // Adds an item with its data; packages are attached afterwards.
    Item& addItem(ItemData data);

    // Removes the items from that index on: those that a failed load has made.
    void truncate(size_t itemCount);

  protected:
    explicit Scene(std::shared_ptr<HostCore> core) : HostObject(std::move(core), "scene") {}
    ~Scene() = default;

  private:
    std::vector<CTzPtr<Item>> items_;
    std::string nameHint_;
};

using ScenePtr = CTzPtr<CTzPolymorph<Scene, ITzScene>>;

}  // namespace tzhost
