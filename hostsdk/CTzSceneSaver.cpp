// The host calls the two interface operations; the saver calls the rest.
#include "hostsdk/CTzSceneSaver.h"

#include <algorithm>

namespace {

constexpr uint32_t kPointBatch = 2048;

}  // namespace

TzResult CTzSceneSaver::verify(ITzScene* scene) noexcept {
    if (!scene) return kTzInvalidArgument;
    const TzResult result = tzGate([&] {
        scene_ = CTzUser_Scene(CTzPtr<ITzScene>::share(scene));
        verifyScene();
    });
    leaveScene();
    return result;
}

TzResult CTzSceneSaver::save(TzText fileName, ITzScene* scene, uint32_t flags) noexcept {
    if (!scene || (flags & ~kTzSavePreparatoryPass) != 0) return kTzInvalidArgument;
    CTzFileFormat* const file = format();
    if (!file) return kTzFailed;
    pass_ = 0;
    TzResult result = tzGate([&] {
        scene_ = CTzUser_Scene(CTzPtr<ITzScene>::share(scene));
        return saveThrough(*file, fileName, flags);
    });
    if (!file->close() && !tzFailed(result)) result = kTzFailed;
    leaveScene();
    return result;
}

TzResult CTzSceneSaver::saveThrough(CTzFileFormat& file, TzText fileName, uint32_t flags) {
    if (!file.open(std::string(tzView(fileName))) || file.hasError()) return kTzFailed;
    if ((flags & kTzSavePreparatoryPass) != 0) {
        const TzResult result = runPass(file, false);
        if (tzFailed(result)) return result;
    }
    const TzResult result = runPass(file, true);
    return !tzFailed(result) && file.hasError() ? kTzFailed : result;
}

TzResult CTzSceneSaver::runPass(CTzFileFormat& file, bool reallySaving) {
    file.setWriting(reallySaving);
    reallySaving_ = reallySaving;
    ++pass_;
    startPass();
    return saveScene();
}

void CTzSceneSaver::startItemScan(std::string_view type) {
    itemType_ = type;
    nextItem_ = 0;
    item_ = {};
    mesh_ = {};
}

bool CTzSceneSaver::nextItem() {
    for (const uint32_t count = scene_.itemCount(); nextItem_ < count;) {
        CTzUser_Item item = scene_.item(nextItem_++);
        if (item.type() != itemType_) continue;
        mesh_ = item.mesh();
        item_ = std::move(item);
        return true;
    }
    item_ = {};
    mesh_ = {};
    return false;
}

void CTzSceneSaver::scanPoints() {
    const uint32_t count = mesh_.pointCount();
    for (firstPoint_ = 0; firstPoint_ < count;) {
        points_.resize(std::min(kPointBatch, count - firstPoint_));
        const auto batch = static_cast<uint32_t>(points_.size());
        mesh_.points(firstPoint_, batch, points_.data());
        for (uint32_t i = 0; i < batch; ++i) {
            pointIdentifier_ = firstPoint_ + i;
            visitPoint();
        }
        firstPoint_ += batch;
    }
    endPoints();
}

void CTzSceneSaver::scanPolygons() {
    const uint32_t count = mesh_.polygonCount();
    for (uint32_t index = 0; index < count; ++index) {
        readPolygon(index);
        visitPolygon();
    }
}

bool CTzSceneSaver::selectPolygon(uint32_t index) {
    if (index >= mesh_.polygonCount()) return false;
    readPolygon(index);
    return true;
}

void CTzSceneSaver::readPolygon(uint32_t index) {
    uint32_t vertexCount = 0;
    mesh_.polygonInfo(index, polygonType_, vertexCount);
    vertices_.resize(vertexCount);
    if (vertexCount > 0) mesh_.vertices(index, 0, vertexCount, vertices_.data());
    polygon_ = index;
}

const std::string* CTzSceneSaver::polygonTag(TzTagId id) {
    return mesh_.polygonTag(polygon_, id, tagText_) ? &tagText_ : nullptr;
}

void CTzSceneSaver::postMessage(std::string_view table, uint32_t code,
                                std::initializer_list<std::string_view> arguments) const {
    CTzUser_Messages(host_.service<ITzMessages>()).post(table, code, arguments);
}

void CTzSceneSaver::leaveScene() noexcept {
    mesh_ = {};
    item_ = {};
    scene_ = {};
    reallySaving_ = false;
}
