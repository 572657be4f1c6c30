// The framework base of scene loaders: implements the host's loader interface, and gives the loader the
// operations it builds a scene with. A loader overrides the four virtual operations; CTzPolymorph of it is
// the server.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hostsdk/CTzUser.h"
#include "hostsdk/ITzSceneLoader.h"

class CTzSceneLoader : public ITzSceneLoader {
  public:
    TzResult recognise(TzText fileName) noexcept final;
    TzResult start(ITzScene* target) noexcept final;
    TzResult load(ITzMonitor* monitor) noexcept final;
    TzResult reset() noexcept final;

    // ---- What a loader and its parts build the scene with. Failures of the host throw CTzError. ----

    // Creates an item of a type in the target scene and makes it the current item; answers its index.
    uint32_t createItem(std::string_view type);

    // Makes the item of that index the current one; the index of the current item.
    void selectItem(uint32_t index);
    uint32_t currentItem() const { return currentIndex_; }

    // The handle of the current item.
    const CTzUser_Item& itemHandle() const { return currentItem_; }

    // All of these work on the current item.
    void addPackage(std::string_view serverName);
    void setChannel(std::string_view channel, std::string_view text);
    void setItemTag(TzTagId id, std::string_view text);

    // Whether the current item has a mesh that takes polygons.
    bool meshAvailable() const { return static_cast<bool>(mesh_); }

    // Builds one polygon of the current mesh: begin (clears the pending vertex list), add points and
    // vertices, end. addPoint answers the point's index, addPoints that of the first of several, which follow
    // one another; endPolygon answers the polygon's. Points are in scene units; equal points are not merged.
    // endPolygon takes flags for the host: 0, none are defined.
    void beginPolygon(TzTagId type);
    uint32_t addPoint(double x, double y, double z);
    uint32_t addPoints(const std::vector<TzPoint>& points);
    void addVertex(uint32_t point) { pendingVertices_.push_back(point); }
    uint32_t endPolygon(uint32_t flags);

    void setPolygonTag(uint32_t polygon, TzTagId id, std::string_view text);

    // The host's monitor for this load; empty when it gave none.
    const CTzUser_Monitor& monitor() const { return monitor_; }

    // Shows the user a message of a host message table, such as why a file is refused; arguments[0] is
    // argument 1. For files of the loader's own format: of others another loader may think differently.
    void postMessage(std::string_view table, uint32_t code,
                     std::initializer_list<std::string_view> arguments) const {
        CTzUser_Messages(host_.service<ITzMessages>()).post(table, code, arguments);
    }

  protected:
    explicit CTzSceneLoader(CTzUser_Host host) : host_(std::move(host)) {}
    virtual ~CTzSceneLoader() = default;

    const CTzUser_Host& host() const { return host_; }

    // Reads the file; true when it is of the loader's format and has been kept for the load.
    virtual bool recogniseFile(const std::string& fileName) = 0;
    // Resets the per-file state and creates the items that receive the file.
    virtual void startLoad() = 0;
    // Loads the recognised file; false fails the operation.
    virtual bool loadFile() = 0;
    // Forgets the recognised file and all per-file state. Must not throw.
    virtual void resetFile() noexcept = 0;

  private:
    enum class Stage { kIdle, kRecognised, kStarted };

    void useItem(CTzUser_Item item, uint32_t index);
    void leaveScene() noexcept;

    CTzUser_Host host_;
    Stage stage_ = Stage::kIdle;
    CTzUser_Scene scene_;
    CTzUser_Item currentItem_;
    uint32_t currentIndex_ = 0;
    CTzUser_Mesh mesh_;
    CTzUser_Monitor monitor_;
    TzTagId polygonType_ = 0;
    std::vector<uint32_t> pendingVertices_;
};
