// The host calls the four interface operations in order; the loader calls the rest.
#include "hostsdk/CTzSceneLoader.h"

TzResult CTzSceneLoader::recognise(TzText fileName) noexcept {
    return tzGate([&] {
        leaveScene();
        stage_ = Stage::kIdle;
        if (!recogniseFile(std::string(tzView(fileName)))) return kTzNotRecognised;
        stage_ = Stage::kRecognised;
        return kTzOk;
    });
}

TzResult CTzSceneLoader::start(ITzScene* target) noexcept {
    if (!target) return kTzInvalidArgument;
    if (stage_ != Stage::kRecognised) return kTzNotReady;
    const TzResult result = tzGate([&] {
        scene_ = CTzUser_Scene(CTzPtr<ITzScene>::share(target));
        startLoad();
    });
    if (tzFailed(result)) {
        leaveScene();
    } else {
        stage_ = Stage::kStarted;
    }
    return result;
}

TzResult CTzSceneLoader::load(ITzMonitor* monitor) noexcept {
    if (stage_ != Stage::kStarted) return kTzNotReady;
    stage_ = Stage::kIdle;
    const TzResult result = tzGate([&] {
        monitor_ = CTzUser_Monitor(CTzPtr<ITzMonitor>::share(monitor));
        return loadFile() ? kTzOk : kTzFailed;
    });
    leaveScene();
    return result;
}

TzResult CTzSceneLoader::reset() noexcept {
    leaveScene();
    stage_ = Stage::kIdle;
    resetFile();
    return kTzOk;
}

uint32_t CTzSceneLoader::createItem(std::string_view type) {
    uint32_t index = 0;
    CTzUser_Item item = scene_.createItem(type, index);
    useItem(std::move(item), index);
    return index;
}

void CTzSceneLoader::selectItem(uint32_t index) {
    if (index != currentIndex_ || !currentItem_) useItem(scene_.item(index), index);
}

void CTzSceneLoader::addPackage(std::string_view serverName) {
    currentItem_.addPackage(serverName);
}

void CTzSceneLoader::setChannel(std::string_view channel, std::string_view text) {
    currentItem_.setChannel(channel, text);
}

void CTzSceneLoader::setItemTag(TzTagId id, std::string_view text) {
    currentItem_.setTag(id, text);
}

void CTzSceneLoader::beginPolygon(TzTagId type) {
    polygonType_ = type;
    pendingVertices_.clear();
}

uint32_t CTzSceneLoader::addPoint(double x, double y, double z) {
    const TzPoint point{x, y, z};
    return mesh_.addPoints(&point, 1);
}

uint32_t CTzSceneLoader::addPoints(const std::vector<TzPoint>& points) {
    return mesh_.addPoints(points.data(), static_cast<uint32_t>(points.size()));
}

uint32_t CTzSceneLoader::endPolygon(uint32_t flags) {
    if (flags != 0) throw CTzError(kTzInvalidArgument);
    return mesh_.addPolygon(polygonType_, pendingVertices_.data(),
                            static_cast<uint32_t>(pendingVertices_.size()));
}

void CTzSceneLoader::setPolygonTag(uint32_t polygon, TzTagId id, std::string_view text) {
    mesh_.setPolygonTag(polygon, id, text);
}

void CTzSceneLoader::useItem(CTzUser_Item item, uint32_t index) {
    mesh_ = item.mesh();
    currentItem_ = std::move(item);
    currentIndex_ = index;
}

void CTzSceneLoader::leaveScene() noexcept {
    monitor_ = {};
    mesh_ = {};
    currentItem_ = {};
    currentIndex_ = 0;
    scene_ = {};
}
