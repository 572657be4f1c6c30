#include "host/scene/Scene.h"

#include <limits>

#include "host/core/Utf8.h"

namespace tzhost {
namespace {

std::string nameOfType(std::string_view type) {
    std::string name(type);
    if (name.front() >= 'a' && name.front() <= 'z')
        name.front() = static_cast<char>(name.front() - 'a' + 'A');
    return name;
}

}  // namespace

TzResult Scene::createItem(TzText type, uint32_t* index, ITzItem** item) noexcept {
    if (item) *item = nullptr;
    return onHostThread("ITzScene::createItem", [&] {
        if (!index || !item) throw CTzError(kTzInvalidArgument);
        ItemData data;
        data.type = checkedText(type);
        if (data.type.empty()) throw CTzError(kTzInvalidArgument);
        data.name = nameHint_.empty() ? nameOfType(data.type) : nameHint_;
        Item& created = addItem(std::move(data));
        *index = static_cast<uint32_t>(items_.size() - 1);
        *item = CTzPtr<ITzItem>::share(&created).detach();
    });
}

TzResult Scene::itemCount(uint32_t* count) noexcept {
    return onHostThread("ITzScene::itemCount", [&] {
        if (!count) throw CTzError(kTzInvalidArgument);
        *count = static_cast<uint32_t>(items_.size());
    });
}

TzResult Scene::itemAt(uint32_t index, ITzItem** item) noexcept {
    if (item) *item = nullptr;
    return onHostThread("ITzScene::itemAt", [&] {
        if (!item) throw CTzError(kTzInvalidArgument);
        if (index >= items_.size()) throw CTzError(kTzOutOfBounds);
        *item = CTzPtr<ITzItem>::share(items_[index].get()).detach();
    });
}

void Scene::setNameHint(std::string_view name) {
    nameHint_ = toUtf8(name);
}

Item& Scene::addItem(ItemData data) {
    if (items_.size() == std::numeric_limits<uint32_t>::max()) throw CTzError(kTzOutOfMemory);
    items_.push_back(makeItem(sharedCore(), std::move(data)));
    return *items_.back();
}

void Scene::truncate(size_t itemCount) {
    while (items_.size() > itemCount) items_.pop_back();
}

}  // namespace tzhost
