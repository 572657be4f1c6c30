// The framework base of scene savers: implements the host's saver interface, and gives the saver the scans
// over a scene's items and over a mesh's points and polygons. A saver overrides the virtual operations;
// CTzPolymorph of it is the server.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hostsdk/CTzFileFormat.h"
#include "hostsdk/CTzUser.h"
#include "hostsdk/ITzSceneSaver.h"

class CTzSceneSaver : public ITzSceneSaver {
  protected:
    // The virtual operations keep this order: the destructor, the interface's two, and the saver's own below.
    virtual ~CTzSceneSaver() = default;

  public:
    // Leads to verifyScene().
    TzResult verify(ITzScene* scene) noexcept final;

    // Opens the format's file, runs saveScene() once for each pass, closes the file.
    TzResult save(TzText fileName, ITzScene* scene, uint32_t flags) noexcept final;

  protected:
    // The format object that writes the file; null fails the save.
    virtual CTzFileFormat* format() noexcept = 0;
    // Called before each pass.
    virtual void startPass() {}
    // May post messages to the user before a save.
    virtual void verifyScene() {}
    // Writes the scene, or walks it only, in the preparatory pass. Answers a result code.
    virtual TzResult saveScene() = 0;
    // Called by scanPoints() for each point, in the order of their identifiers.
    virtual void visitPoint() {}
    // Called by scanPoints() after the last point.
    virtual void endPoints() {}
    // Called by scanPolygons() for each polygon.
    virtual void visitPolygon() {}

    explicit CTzSceneSaver(CTzUser_Host host) : host_(std::move(host)) {}

  public:
    // ---- What a saver and its parts read the scene with. Failures of the host throw CTzError. ----

    // Whether this is the real pass, and its number in this save, from 1 on.
    bool reallySaving() const { return reallySaving_; }
    unsigned pass() const { return pass_; }

    // Scans the items of one type: start, then step until the answer is false. The item stepped to is the
    // current item.
    void startItemScan(std::string_view type);
    bool nextItem();

    // All of these read the current item. Nothing when it has no such tag or channel.
    std::string itemName() const { return item_.name(); }
    std::optional<std::string> itemTag(TzTagId id) const { return item_.tag(id); }
    std::optional<std::string> channel(std::string_view name) const { return item_.channel(name); }

    // Whether the current item has a mesh, and the box around all its points.
    bool meshAvailable() const { return static_cast<bool>(mesh_); }
    TzBox meshBounds() const { return mesh_.bounds(); }

    // Visits all points of the current mesh. They are read in batches: a visit costs no call to the host.
    void scanPoints();
    uint32_t pointIdentifier() const { return pointIdentifier_; }
    const TzPoint& pointPosition() const { return points_[pointIdentifier_ - firstPoint_]; }

    // Visits all polygons of the current mesh; or makes one the current one, false when there is none of that
    // index.
    void scanPolygons();
    bool selectPolygon(uint32_t index);

    // All of these read the current polygon: its type, its vertices as point identifiers, and its string
    // tags, null when absent. A tag's text is good until the next tag is read.
    TzTagId polygonType() const { return polygonType_; }
    const std::vector<uint32_t>& polygonVertices() const { return vertices_; }
    const std::string* polygonTag(TzTagId id);

    // Shows the user a message of a host message table; arguments[0] is argument 1.
    void postMessage(std::string_view table, uint32_t code,
                     std::initializer_list<std::string_view> arguments) const;

  private:
    TzResult saveThrough(CTzFileFormat& file, TzText fileName, uint32_t flags);
    TzResult runPass(CTzFileFormat& file, bool reallySaving);
    void readPolygon(uint32_t index);
    void leaveScene() noexcept;

    CTzUser_Host host_;
    CTzUser_Scene scene_;
    bool reallySaving_ = false;
    unsigned pass_ = 0;

    std::string itemType_;
    uint32_t nextItem_ = 0;
    CTzUser_Item item_;
    CTzUser_Mesh mesh_;

    std::vector<TzPoint> points_;  // the batch that the scan is in
    uint32_t firstPoint_ = 0;
    uint32_t pointIdentifier_ = 0;

    uint32_t polygon_ = 0;
    TzTagId polygonType_ = 0;
    std::vector<uint32_t> vertices_;
    std::string tagText_;
};
