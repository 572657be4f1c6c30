// The scene as modules see it: items by index, their tags, packages and channels, and the mesh of a mesh
// item. Items are counted objects; points, polygons and vertices are numbers on their mesh.
#pragma once

#include "hostsdk/ITzObject.h"

class ITzItem : public ITzObject {
  public:
    static constexpr char kId[] = "tz.item/1";

    // The item's name, and its type name ("mesh", ...). The host gives names. [host thread]
    virtual TzResult name(TzTextSink sink) noexcept = 0;
    virtual TzResult type(TzTextSink sink) noexcept = 0;

    // Sets a string tag, replacing the one of that ID. Tags keep the order of their creation.
    // kTzInvalidArgument for an ID that is not four ASCII characters. [host thread]
    virtual TzResult setTag(TzTagId id, TzText text) noexcept = 0;

    // Reads a string tag; kTzNotFound when the item has none of that ID. [host thread]
    virtual TzResult tag(TzTagId id, TzTextSink sink) noexcept = 0;

    // Adds the package of that server name to the item, and with it the package's channels, all empty.
    // kTzNotFound when no such server is registered, kTzExists when the item has the package, kTzNoInterface
    // when the server is no package, kTzNotSupported for a channel that is not of strings; what the package
    // answers otherwise. Nothing is added then. A channel that the item already has by another package is
    // shared. [host thread]
    virtual TzResult addPackage(TzText serverName) noexcept = 0;

    // Sets a string channel, replacing its text. kTzNotFound when none of the item's packages has a channel
    // of that name. [host thread]
    virtual TzResult setChannel(TzText channel, TzText text) noexcept = 0;

    // Reads a string channel; kTzNotFound as above. A channel never set reads as empty. [host thread]
    virtual TzResult channel(TzText channel, TzTextSink sink) noexcept = 0;

  protected:
    ~ITzItem() = default;
};

// The mesh of a mesh item: asked of the item by query(). Indices count from 0 in the order of creation.
class ITzMesh : public ITzObject {
  public:
    static constexpr char kId[] = "tz.mesh/1";

    // Adds `count` points, in scene units in the item's space; *first is the index of the first of them, the
    // others follow. Points at equal places are not merged. kTzInvalidArgument when a coordinate is not
    // finite (nothing is added then). [host thread]
    virtual TzResult addPoints(const TzPoint* points, uint32_t count, uint32_t* first) noexcept = 0;

    // Adds a polygon of a type over points, one vertex for each index; no points are allowed. kTzOutOfBounds
    // when a point does not exist, kTzInvalidArgument for a type that is not four ASCII characters (nothing
    // is added then). [host thread]
    virtual TzResult addPolygon(TzTagId type, const uint32_t* points, uint32_t count,
                                uint32_t* polygon) noexcept = 0;

    // Sets a string tag of a polygon, replacing the one of that ID. kTzOutOfBounds when the polygon does not
    // exist, kTzInvalidArgument for an ID that is not four ASCII characters. [host thread]
    virtual TzResult setPolygonTag(uint32_t polygon, TzTagId id, TzText text) noexcept = 0;

    // Reads a string tag of a polygon; kTzNotFound when it has none of that ID, kTzOutOfBounds when there is
    // no such polygon. [host thread]
    virtual TzResult polygonTag(uint32_t polygon, TzTagId id, TzTextSink sink) noexcept = 0;

    // The number of points, and `count` positions from point `first` on, into an array of `count`.
    // kTzOutOfBounds when the range passes the end. [host thread]
    virtual TzResult pointCount(uint32_t* count) noexcept = 0;
    virtual TzResult points(uint32_t first, uint32_t count, TzPoint* out) noexcept = 0;

    // The number of polygons; type and number of vertices of one; and `count` of its vertices as point
    // indices from vertex `first` on, into an array of `count`. kTzOutOfBounds beyond the end. [host thread]
    virtual TzResult polygonCount(uint32_t* count) noexcept = 0;
    virtual TzResult polygonInfo(uint32_t polygon, TzTagId* type, uint32_t* vertexCount) noexcept = 0;
    virtual TzResult vertices(uint32_t polygon, uint32_t first, uint32_t count, uint32_t* out) noexcept = 0;

    // The box around all points, in the item's space; all zero when there are none. [host thread]
    virtual TzResult bounds(TzBox* box) noexcept = 0;

  protected:
    ~ITzMesh() = default;
};

class ITzScene : public ITzObject {
  public:
    static constexpr char kId[] = "tz.scene/1";

    // Creates an item of a type ("mesh", ...) at the end of the scene; *index is its place. The host names
    // it. kTzInvalidArgument for an empty type. [host thread]
    virtual TzResult createItem(TzText type, uint32_t* index, ITzItem** item) noexcept = 0;

    // The number of items, and item i. kTzOutOfBounds beyond the last. [host thread]
    virtual TzResult itemCount(uint32_t* count) noexcept = 0;
    virtual TzResult itemAt(uint32_t index, ITzItem** item) noexcept = 0;

  protected:
    ~ITzScene() = default;
};
