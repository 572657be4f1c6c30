#include "host/scene/Item.h"

#include <algorithm>

#include "host/core/Observer.h"
#include "host/core/Utf8.h"
#include "host/scene/Tags.h"
#include "hostsdk/CTzPolymorph.h"

namespace tzhost {
namespace {

// Tag IDs and polygon types stand in scene files as four ASCII characters.
void checkTag(TzTagId id) {
    if (!isTagName(id)) throw CTzError(kTzInvalidArgument);
}

void checkOut(const void* out) {
    if (!out) throw CTzError(kTzInvalidArgument);
}

// An array of that many elements: may be null when there are none.
void checkArray(const void* array, uint32_t count) {
    if (count > 0) checkOut(array);
}

}  // namespace

TzResult Item::name(TzTextSink sink) noexcept {
    return onHostThread("ITzItem::name", [&] { writeTo(sink, data_.name); });
}

TzResult Item::type(TzTextSink sink) noexcept {
    return onHostThread("ITzItem::type", [&] { writeTo(sink, data_.type); });
}

TzResult Item::setTag(TzTagId id, TzText text) noexcept {
    return onHostThread("ITzItem::setTag", [&] {
        checkTag(id);
        std::string value(checkedText(text));
        for (ItemTag& tag : data_.tags) {
            if (tag.id == id) {
                tag.text = std::move(value);
                return;
            }
        }
        data_.tags.push_back({id, std::move(value)});
    });
}

TzResult Item::tag(TzTagId id, TzTextSink sink) noexcept {
    return onHostThread("ITzItem::tag", [&] {
        for (const ItemTag& tag : data_.tags) {
            if (tag.id == id) return writeTo(sink, tag.text);
        }
        throw CTzError(kTzNotFound);
    });
}

TzResult Item::addPackage(TzText serverName) noexcept {
    return onHostThread("ITzItem::addPackage", [&] { attachPackage(checkedText(serverName)); });
}

TzResult Item::setChannel(TzText channel, TzText text) noexcept {
    return onHostThread("ITzItem::setChannel", [&] { putChannel(checkedText(channel), checkedText(text)); });
}

TzResult Item::channel(TzText channel, TzTextSink sink) noexcept {
    return onHostThread("ITzItem::channel", [&] { writeTo(sink, findChannel(checkedText(channel)).text); });
}

void Item::attachPackage(std::string_view serverName) {
    for (const ItemPackage& package : data_.packages) {
        if (package.name == serverName) throw CTzError(kTzExists);
    }
    const auto package = core().servers.spawn<ITzPackage>(serverName);

    // The item is changed only when the package has answered everything.
    std::vector<Channel> channels = data_.channels;
    uint32_t count = 0;
    tzCheck(package->channelCount(&count));
    for (uint32_t i = 0; i < count; ++i) {
        std::string channel;
        std::string channelType;
        tzCheck(package->channelAt(i, tzSinkTo(channel), tzSinkTo(channelType)));
        if (channelType != kTzChannelString) throw CTzError(kTzNotSupported);
        if (!isUtf8(channel)) throw CTzError(kTzInvalidArgument);
        const bool present = std::any_of(channels.begin(), channels.end(),
                                         [&](const Channel& other) { return other.name == channel; });
        if (!present) channels.push_back({std::move(channel), {}});
    }

    ItemPackage attached{std::string(serverName), {}};
    if (const auto instances = package.query<ITzPackageInstances>()) {
        ITzPackageInstance* instance = nullptr;
        tzCheck(instances->createInstance(this, &instance));
        attached.instance = CTzPtr<ITzPackageInstance>::adopt(instance);
    }
    data_.packages.push_back(std::move(attached));
    data_.channels = std::move(channels);
}

void Item::putChannel(std::string_view name, std::string_view text) {
    findChannel(name).text = text;
}

Channel& Item::findChannel(std::string_view name) {
    for (Channel& channel : data_.channels) {
        if (channel.name == name) return channel;
    }
    throw CTzError(kTzNotFound);
}

TzResult MeshItem::addPoints(const TzPoint* points, uint32_t count, uint32_t* first) noexcept {
    return onHostThread("ITzMesh::addPoints", [&] {
        checkOut(first);
        checkArray(points, count);
        *first = data_.mesh.addPoints(points, count);
    });
}

TzResult MeshItem::addPolygon(TzTagId type, const uint32_t* points, uint32_t count,
                              uint32_t* polygon) noexcept {
    return onHostThread("ITzMesh::addPolygon", [&] {
        checkOut(polygon);
        checkArray(points, count);
        checkTag(type);
        if (!data_.mesh.pointsExist(points, count)) throw CTzError(kTzOutOfBounds);
        *polygon = data_.mesh.addPolygon(type, points, count);
    });
}

TzResult MeshItem::setPolygonTag(uint32_t polygon, TzTagId id, TzText text) noexcept {
    return onHostThread("ITzMesh::setPolygonTag", [&] {
        checkTag(id);
        data_.mesh.setTag(polygon, id, checkedText(text));
    });
}

TzResult MeshItem::polygonTag(uint32_t polygon, TzTagId id, TzTextSink sink) noexcept {
    return onHostThread("ITzMesh::polygonTag", [&] {
        const auto text = findTag(data_.mesh.polygon(polygon).tags, id);
        // Not thrown, for speed: a saver asks every polygon for tags that most lack.
        if (!text) return kTzNotFound;
        writeTo(sink, *text);
        return kTzOk;
    });
}

TzResult MeshItem::pointCount(uint32_t* count) noexcept {
    return onHostThread("ITzMesh::pointCount", [&] {
        checkOut(count);
        *count = data_.mesh.pointCount();
    });
}

TzResult MeshItem::points(uint32_t first, uint32_t count, TzPoint* out) noexcept {
    return onHostThread("ITzMesh::points", [&] {
        checkArray(out, count);
        data_.mesh.copyPoints(first, count, out);
    });
}

TzResult MeshItem::polygonCount(uint32_t* count) noexcept {
    return onHostThread("ITzMesh::polygonCount", [&] {
        checkOut(count);
        *count = data_.mesh.polygonCount();
    });
}

TzResult MeshItem::polygonInfo(uint32_t polygon, TzTagId* type, uint32_t* vertexCount) noexcept {
    return onHostThread("ITzMesh::polygonInfo", [&] {
        checkOut(type);
        checkOut(vertexCount);
        const Polygon& found = data_.mesh.polygon(polygon);
        *type = found.type;
        *vertexCount = found.vertexCount;
        if (core().polygonReads) core().polygonReads->step();
    });
}

TzResult MeshItem::vertices(uint32_t polygon, uint32_t first, uint32_t count, uint32_t* out) noexcept {
    return onHostThread("ITzMesh::vertices", [&] {
        checkArray(out, count);
        data_.mesh.copyVertices(data_.mesh.polygon(polygon), first, count, out);
    });
}

TzResult MeshItem::bounds(TzBox* box) noexcept {
    return onHostThread("ITzMesh::bounds", [&] {
        checkOut(box);
        *box = data_.mesh.bounds();
    });
}

CTzPtr<Item> makeItem(const std::shared_ptr<HostCore>& core, ItemData data) {
    if (data.isMesh()) {
        auto mesh = CTzPolymorph<MeshItem, ITzItem, ITzMesh>::createSelf(core, std::move(data));
        return CTzPtr<Item>::adopt(mesh.detach());
    }
    auto item = CTzPolymorph<Item, ITzItem>::createSelf(core, std::move(data));
    return CTzPtr<Item>::adopt(item.detach());
}

}  // namespace tzhost
