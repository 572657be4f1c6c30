// The scene file's format as a table: which keys stand where, what each must be, and where an object or an
// array leads. Used by SceneParser.
#pragma once

#include <array>
#include <string_view>

namespace tzhost {

// A place in the file, in the names of the format.
enum class ScenePlace {
    kOutside,
    kDocument,
    kItems,
    kItem,
    kItemTags,
    kPackages,
    kChannels,
    kPoints,
    kPoint,
    kPolygons,
    kPolygon,
    kVertices,
    kPolygonTags,
};

// A key of the document, of an item or of a polygon.
enum class SceneMember {
    kNone,
    kFormat,
    kVersion,
    kItems,
    kType,
    kName,
    kTags,
    kPackages,
    kChannels,
    kPoints,
    kPolygons,
    kVertices
};

enum class SceneKind { kValue, kObject, kArray };

struct SceneField {
    ScenePlace in;
    SceneMember key;
    const char* name;
    const char* expected;
    SceneKind kind;
    ScenePlace to;
};

// Those of which a file has most come first.
constexpr std::array<SceneField, 23> kSceneFields{{
    {ScenePlace::kPoints, SceneMember::kNone, "", "an array of three numbers", SceneKind::kArray,
     ScenePlace::kPoint},
    {ScenePlace::kPoint, SceneMember::kNone, "", "three numbers", SceneKind::kValue, {}},
    {ScenePlace::kPolygons, SceneMember::kNone, "", "an object", SceneKind::kObject, ScenePlace::kPolygon},
    {ScenePlace::kPolygon, SceneMember::kType, "type", "a text", SceneKind::kValue, {}},
    {ScenePlace::kPolygon, SceneMember::kVertices, "vertices", "an array", SceneKind::kArray,
     ScenePlace::kVertices},
    {ScenePlace::kPolygon, SceneMember::kTags, "tags", "an object", SceneKind::kObject,
     ScenePlace::kPolygonTags},
    {ScenePlace::kVertices, SceneMember::kNone, "", "the index of a point", SceneKind::kValue, {}},
    {ScenePlace::kPolygonTags, SceneMember::kNone, "", "a text", SceneKind::kValue, {}},
    {ScenePlace::kOutside, SceneMember::kNone, "", "an object", SceneKind::kObject, ScenePlace::kDocument},
    {ScenePlace::kDocument, SceneMember::kFormat, "format", "the text \"tzscene\"", SceneKind::kValue, {}},
    {ScenePlace::kDocument, SceneMember::kVersion, "version", "the number 1", SceneKind::kValue, {}},
    {ScenePlace::kDocument, SceneMember::kItems, "items", "an array", SceneKind::kArray, ScenePlace::kItems},
    {ScenePlace::kItems, SceneMember::kNone, "", "an object", SceneKind::kObject, ScenePlace::kItem},
    {ScenePlace::kItem, SceneMember::kType, "type", "a text", SceneKind::kValue, {}},
    {ScenePlace::kItem, SceneMember::kName, "name", "a text", SceneKind::kValue, {}},
    {ScenePlace::kItem, SceneMember::kTags, "tags", "an object", SceneKind::kObject, ScenePlace::kItemTags},
    {ScenePlace::kItem, SceneMember::kPackages, "packages", "an array", SceneKind::kArray,
     ScenePlace::kPackages},
    {ScenePlace::kItem, SceneMember::kChannels, "channels", "an object", SceneKind::kObject,
     ScenePlace::kChannels},
    {ScenePlace::kItem, SceneMember::kPoints, "points", "an array", SceneKind::kArray, ScenePlace::kPoints},
    {ScenePlace::kItem, SceneMember::kPolygons, "polygons", "an array", SceneKind::kArray,
     ScenePlace::kPolygons},
    {ScenePlace::kItemTags, SceneMember::kNone, "", "a text", SceneKind::kValue, {}},
    {ScenePlace::kPackages, SceneMember::kNone, "", "a text", SceneKind::kValue, {}},
    {ScenePlace::kChannels, SceneMember::kNone, "", "a text", SceneKind::kValue, {}},
}};

inline const SceneField* findSceneField(ScenePlace in, SceneMember key) {
    for (const SceneField& field : kSceneFields) {
        if (field.in == in && field.key == key) return &field;
    }
    return nullptr;
}

inline const SceneField* findSceneField(ScenePlace in, std::string_view name) {
    for (const SceneField& field : kSceneFields) {
        if (field.in == in && field.name == name) return &field;
    }
    return nullptr;
}

// Where an object or array that ends leads back to.
inline ScenePlace sceneAround(ScenePlace place) {
    for (const SceneField& field : kSceneFields) {
        if (field.kind != SceneKind::kValue && field.to == place) return field.in;
    }
    return ScenePlace::kOutside;
}

}  // namespace tzhost
