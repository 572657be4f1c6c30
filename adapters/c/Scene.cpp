// Scenes and items.
#include "adapters/c/Scene.h"

#include "adapters/c/Structs.h"
#include "host/Refusal.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/scene/Tags.h"
#include "hostsdk/CTzText.h"

namespace tzh {
namespace {

std::unique_ptr<TzhScene> makeScene(TzhSession* session) {
    require(session, "session is NULL");
    session->state->requireThread();
    auto made = std::make_unique<TzhScene>();
    made->state = session->state;
    made->scene = session->state->session.host.makeScene();
    return made;
}

template <class List>
const auto& at(const List& list, uint32_t index, const char* what) {
    if (index >= list.size()) throw Refused{TZH_NOT_FOUND, std::string("no such ") + what};
    return list[index];
}

void requireFlags(uint32_t flags, uint32_t known) {
    require((flags & ~known) == 0, "flags: unknown bits");
}

}  // namespace

tzhost::Item& itemOf(const TzhScene* scene, uint32_t item) {
    require(scene, "scene is NULL");
    scene->state->requireThread();
    return *at(scene->scene->items(), item, "item");
}

}  // namespace tzh

TzhStatus tzh_scene_new(TzhScene** scene, TzhSession* session) {
    if (scene) *scene = nullptr;
    return tzh::guarded([&] {
        tzh::require(scene, "scene is NULL");
        *scene = tzh::makeScene(session).release();
    });
}

TzhStatus tzh_scene_import(TzhScene** scene, TzhSession* session, const char* file, uint32_t flags,
                           const TzhCallbacks* callbacks) {
    if (scene) *scene = nullptr;
    return tzh::guarded([&] {
        tzh::require(scene, "scene is NULL");
        tzh::requireFlags(flags, TZH_NORMALIZE);
        const std::string_view name = tzh::nameOf(file, "file");
        auto made = tzh::makeScene(session);
        tzh::followed(*made->state, callbacks, [&] {
            const tzhost::Drawing drawing = (flags & TZH_NORMALIZE) != 0
                                                ? tzhost::Drawing::normalized(name, tzhost::Purpose::kScene)
                                                : tzhost::Drawing(tzhost::unpacked(name));
            tzhost::explainingRefusal(drawing, tzhost::Purpose::kScene, [&] {
                tzhost::importFile(made->state->session.host, *made->scene, drawing);
            });
            if (drawing.normalization()) made->notes = drawing.normalization()->notesJson;
        });
        *scene = made.release();
    });
}

TzhStatus tzh_scene_export(TzhScene* scene, const char* file, uint32_t flags, const TzhCallbacks* callbacks) {
    return tzh::guarded([&] {
        tzh::require(scene, "scene is NULL");
        tzh::requireFlags(flags, TZH_PREPARE);
        const std::string_view name = tzh::nameOf(file, "file");
        tzh::followed(*scene->state, callbacks, [&] {
            tzhost::exportFile(scene->state->session.host, *scene->scene, name, {(flags & TZH_PREPARE) != 0});
        });
    });
}

const char* tzh_scene_notes(const TzhScene* scene) {
    return scene ? scene->notes.c_str() : "{}";
}

void tzh_scene_free(TzhScene* scene) {
    delete scene;
}

uint32_t tzh_item_count(const TzhScene* scene) {
    return scene ? static_cast<uint32_t>(scene->scene->items().size()) : 0;
}

TzhStatus tzh_item_get(const TzhScene* scene, uint32_t item, TzhItem* out) {
    return tzh::guarded([&] {
        tzh::requireStruct(out);
        const tzhost::ItemData& data = tzh::itemOf(scene, item).data();
        TzhItem told{};
        told.type = data.type.c_str();
        told.name = data.name.c_str();
        told.tag_count = static_cast<uint32_t>(data.tags.size());
        told.package_count = static_cast<uint32_t>(data.packages.size());
        told.channel_count = static_cast<uint32_t>(data.channels.size());
        tzh::copyOut(told, out);
    });
}

TzhStatus tzh_item_tag(const TzhScene* scene, uint32_t item, uint32_t index, uint32_t* tag,
                       const char** text) {
    return tzh::guarded([&] {
        tzh::require(tag && text, "tag or text is NULL");
        const tzhost::ItemTag& found = tzh::at(tzh::itemOf(scene, item).data().tags, index, "tag");
        *tag = found.id;
        *text = found.text.c_str();
    });
}

TzhStatus tzh_item_package(const TzhScene* scene, uint32_t item, uint32_t index, const char** name) {
    return tzh::guarded([&] {
        tzh::require(name, "name is NULL");
        *name = tzh::at(tzh::itemOf(scene, item).data().packages, index, "package").name.c_str();
    });
}

TzhStatus tzh_item_channel(const TzhScene* scene, uint32_t item, uint32_t index, const char** name,
                           const char** text) {
    return tzh::guarded([&] {
        tzh::require(name && text, "name or text is NULL");
        const tzhost::Channel& found = tzh::at(tzh::itemOf(scene, item).data().channels, index, "channel");
        *name = found.name.c_str();
        *text = found.text.c_str();
    });
}

TzhStatus tzh_item_add(TzhScene* scene, const char* type, const char* name, uint32_t* item) {
    return tzh::guarded([&] {
        tzh::require(scene, "scene is NULL");
        scene->state->requireThread();
        tzhost::ItemData data;
        data.type = tzh::nameOf(type, "type");
        data.name = tzh::textOf(name, "name");
        scene->scene->addItem(std::move(data));
        if (item) *item = tzh_item_count(scene) - 1;
    });
}

TzhStatus tzh_item_set_tag(TzhScene* scene, uint32_t item, uint32_t tag, const char* text) {
    return tzh::guarded([&] {
        tzh::require(tzhost::isTagName(tag), "tag: not four ASCII characters");
        tzCheck(tzh::itemOf(scene, item).setTag(tag, tzText(tzh::textOf(text, "text"))));
    });
}

TzhStatus tzh_item_add_package(TzhScene* scene, uint32_t item, const char* name) {
    return tzh::guarded([&] { tzh::itemOf(scene, item).attachPackage(tzh::nameOf(name, "name")); });
}

TzhStatus tzh_item_set_channel(TzhScene* scene, uint32_t item, const char* name, const char* text) {
    return tzh::guarded(
        [&] { tzh::itemOf(scene, item).putChannel(tzh::nameOf(name, "name"), tzh::textOf(text, "text")); });
}
