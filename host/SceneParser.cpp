// See the header.
#include "host/SceneParser.h"

#include <algorithm>
#include <limits>

#include "host/TagName.h"
#include "host/Utf8.h"

namespace tzhost {
namespace {

using Place = SceneParser::Place;
using Key = SceneParser::Key;

enum class Kind { kValue, kObject, kArray };

// The format: which keys stand where, what each must be, and where an object or an array leads.
struct Field {
    Place in;
    Key key;
    const char* name;
    const char* expected;
    Kind kind;
    Place to;
};
constexpr std::array<Field, 23> kFields{{
    {Place::kPoints, Key::kNone, "", "an array of three numbers", Kind::kArray, Place::kPoint},
    {Place::kPoint, Key::kNone, "", "three numbers", Kind::kValue, {}},
    {Place::kPolygons, Key::kNone, "", "an object", Kind::kObject, Place::kPolygon},
    {Place::kPolygon, Key::kType, "type", "a text", Kind::kValue, {}},
    {Place::kPolygon, Key::kVertices, "vertices", "an array", Kind::kArray, Place::kVertices},
    {Place::kPolygon, Key::kTags, "tags", "an object", Kind::kObject, Place::kPolygonTags},
    {Place::kVertices, Key::kNone, "", "the index of a point", Kind::kValue, {}},
    {Place::kPolygonTags, Key::kNone, "", "a text", Kind::kValue, {}},
    {Place::kOutside, Key::kNone, "", "an object", Kind::kObject, Place::kDocument},
    {Place::kDocument, Key::kFormat, "format", "the text \"tzscene\"", Kind::kValue, {}},
    {Place::kDocument, Key::kVersion, "version", "the number 1", Kind::kValue, {}},
    {Place::kDocument, Key::kItems, "items", "an array", Kind::kArray, Place::kItems},
    {Place::kItems, Key::kNone, "", "an object", Kind::kObject, Place::kItem},
    {Place::kItem, Key::kType, "type", "a text", Kind::kValue, {}},
    {Place::kItem, Key::kName, "name", "a text", Kind::kValue, {}},
    {Place::kItem, Key::kTags, "tags", "an object", Kind::kObject, Place::kItemTags},
    {Place::kItem, Key::kPackages, "packages", "an array", Kind::kArray, Place::kPackages},
    {Place::kItem, Key::kChannels, "channels", "an object", Kind::kObject, Place::kChannels},
    {Place::kItem, Key::kPoints, "points", "an array", Kind::kArray, Place::kPoints},
    {Place::kItem, Key::kPolygons, "polygons", "an array", Kind::kArray, Place::kPolygons},
    {Place::kItemTags, Key::kNone, "", "a text", Kind::kValue, {}},
    {Place::kPackages, Key::kNone, "", "a text", Kind::kValue, {}},
    {Place::kChannels, Key::kNone, "", "a text", Kind::kValue, {}},
}};

const Field* findField(Place in, Key key) {
    for (const Field& field : kFields) {
        if (field.in == in && field.key == key) return &field;
    }
    return nullptr;
}

const Field* findField(Place in, const std::string& name) {
    for (const Field& field : kFields) {
        if (field.in == in && field.name == name) return &field;
    }
    return nullptr;
}

// Where an object or array that ends leads back to.
Place around(Place place) {
    for (const Field& field : kFields) {
        if (field.kind != Kind::kValue && field.to == place) return field.in;
    }
    return Place::kOutside;
}

unsigned bit(Key key) {
    return 1U << static_cast<unsigned>(key);
}

std::string inQuotes(const std::string& text) {
    return "\"" + toOneLine(text, 80) + "\"";
}

std::string element(const char* list, size_t index) {
    return list + ("[" + std::to_string(index)) + "]";
}

}  // namespace

bool SceneParser::boolean(bool /*value*/) {
    return refuseValue();
}

bool SceneParser::binary(nlohmann::json::binary_t& /*value*/) {
    return refuseValue();  // JSON text has none
}

bool SceneParser::number_integer(int64_t value) {
    if (place_ == Place::kVertices) return fail("there is no point " + std::to_string(value));
    return coordinate(static_cast<double>(value));
}

bool SceneParser::number_unsigned(uint64_t value) {
    if (place_ == Place::kVertices) {
        if (value > std::numeric_limits<uint32_t>::max())
            return fail("there is no point " + std::to_string(value));
        vertices_.push_back(static_cast<uint32_t>(value));
        return true;
    }
    if (place_ == Place::kDocument && key_ == Key::kVersion) return value == 1 || refuseValue();
    return coordinate(static_cast<double>(value));
}

bool SceneParser::number_float(double value, const std::string& /*text*/) {
    return coordinate(value);
}

bool SceneParser::coordinate(double value) {
    if (place_ != Place::kPoint || coordinates_ == point_.size()) return refuseValue();
    point_[coordinates_++] = value;
    return true;
}

bool SceneParser::string(std::string& value) {
    switch (place_) {
        case Place::kPolygonTags:
            item().data.mesh.tagArena().add(polygonTags_, tag_, value);
            return true;
        case Place::kItemTags:
            item().data.tags.push_back({tag_, std::move(value)});
            return true;
        case Place::kChannels:
            item().channels.back().second = std::move(value);
            return true;
        case Place::kPackages:
            item().packages.push_back(std::move(value));
            return true;
        case Place::kPolygon:
            if (key_ != Key::kType) return refuseValue();
            if (const auto type = tagFromName(value)) {
                polygonType_ = *type;
                return true;
            }
            return fail(inQuotes(value) + " is not four ASCII characters");
        case Place::kItem:
            if (key_ == Key::kType && value.empty()) return fail("is empty");
            if (key_ != Key::kType && key_ != Key::kName) return refuseValue();
            (key_ == Key::kType ? item().data.type : item().data.name) = std::move(value);
            return true;
        case Place::kDocument:
            return (key_ == Key::kFormat && value == "tzscene") || refuseValue();
        default:
            return refuseValue();
    }
}

bool SceneParser::start_object(size_t /*size*/) {
    return open(true);
}

bool SceneParser::start_array(size_t /*size*/) {
    return open(false);
}

bool SceneParser::open(bool object) {
    const Field* const field = findField(place_, key_);
    if (!field || field->kind != (object ? Kind::kObject : Kind::kArray)) return refuseValue();
    switch (field->to) {
        case Place::kItem:
            items_.emplace_back();
            itemKeys_ = 0;
            break;
        case Place::kPolygon:
            polygonKeys_ = 0;
            polygonTags_ = {};
            vertices_.clear();
            break;
        case Place::kPoint:
            coordinates_ = 0;
            break;
        case Place::kItemTags:
        case Place::kPolygonTags:
            tags_.clear();
            break;
        default:
            break;
    }
    place_ = field->to;
    key_ = Key::kNone;
    return true;
}

bool SceneParser::key(std::string& name) {
    if (place_ == Place::kItemTags || place_ == Place::kPolygonTags) return tagKey(name);
    if (place_ == Place::kChannels) {
        item().channels.emplace_back(std::move(name), std::string());
        return true;
    }
    key_ = Key::kNone;
    const Field* const field = findField(place_, name);
    if (!field) return fail("unknown key " + inQuotes(name));
    if ((keysSeen() & bit(field->key)) != 0) return fail("key " + inQuotes(name) + " appears twice");
    keysSeen() |= bit(field->key);
    key_ = field->key;
    return true;
}

bool SceneParser::tagKey(const std::string& name) {
    const auto id = tagFromName(name);
    if (!id) return fail("tag name " + inQuotes(name) + " is not four ASCII characters");
    tag_ = *id;
    tags_.push_back(*id);
    return true;
}

bool SceneParser::end_array() {
    if (place_ == Place::kPoint && !endPoint()) return false;
    place_ = around(place_);
    key_ = Key::kNone;
    return true;
}

bool SceneParser::end_object() {
    key_ = Key::kNone;
    bool complete = true;
    switch (place_) {
        case Place::kDocument:
            complete = haveKeys({Key::kFormat, Key::kVersion, Key::kItems});
            break;
        case Place::kItem:
            complete = haveKeys({Key::kType, Key::kName}) && endItem();
            break;
        case Place::kPolygon:
            complete = haveKeys({Key::kType, Key::kVertices}) && endPolygon();
            break;
        case Place::kItemTags:
        case Place::kPolygonTags:
            complete = distinctTags();
            break;
        default:
            break;
    }
    if (!complete) return false;
    place_ = around(place_);
    return true;
}

bool SceneParser::endPoint() {
    if (coordinates_ != point_.size()) return refuseValue();
    const TzPoint point{point_[0], point_[1], point_[2]};
    item().data.mesh.addPoints(&point, 1);
    return true;
}

bool SceneParser::endPolygon() {
    item().data.mesh.addPolygon(polygonType_, vertices_.data(), static_cast<uint32_t>(vertices_.size()),
                                polygonTags_);
    return true;
}

bool SceneParser::endItem() {
    const MeshData& mesh = item().data.mesh;
    if (!item().data.isMesh() && mesh.pointCount() + mesh.polygonCount() > 0) {
        return fail("only an item of type \"mesh\" has points and polygons");
    }
    for (uint32_t index = 0; index < mesh.polygonCount(); ++index) {
        const Polygon& polygon = mesh.polygon(index);
        for (uint32_t i = 0; i < polygon.vertexCount; ++i) {
            const uint32_t vertex = mesh.vertex(polygon, i);
            if (vertex < mesh.pointCount()) continue;
            return fail(element("polygons", index) + "." + element("vertices", i) + ": there is no point " +
                        std::to_string(vertex));
        }
    }
    std::vector<std::string> names;
    for (const auto& channel : item().channels) names.push_back(channel.first);
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    return twice == names.end() || fail("channels: key " + inQuotes(*twice) + " appears twice");
}

bool SceneParser::distinctTags() {
    std::sort(tags_.begin(), tags_.end());
    const auto twice = std::adjacent_find(tags_.begin(), tags_.end());
    return twice == tags_.end() || fail("key " + inQuotes(tagName(*twice)) + " appears twice");
}

bool SceneParser::haveKeys(std::initializer_list<Key> required) {
    for (const Key key : required) {
        if ((keysSeen() & bit(key)) == 0) {
            return fail("key " + inQuotes(findField(place_, key)->name) + " is missing");
        }
    }
    return true;
}

unsigned& SceneParser::keysSeen() {
    if (place_ == Place::kDocument) return documentKeys_;
    return place_ == Place::kItem ? itemKeys_ : polygonKeys_;
}

bool SceneParser::parse_error(size_t /*position*/, const std::string& /*token*/,
                              const nlohmann::detail::exception& exception) {
    // "[json.exception.parse_error.101] parse error at line 1, column 2: ...": the code says nothing to a
    // user.
    const std::string_view text = exception.what();
    const size_t bracket = text.find("] ");
    problem_ = text.substr(bracket == std::string_view::npos ? 0 : bracket + 2);
    return false;
}

bool SceneParser::refuseValue() {
    const Field* const field = findField(place_, key_);
    std::string what = std::string("expected ") + (field ? field->expected : "nothing here");
    if (place_ == Place::kItemTags || place_ == Place::kPolygonTags)
        what += " at key " + inQuotes(tagName(tag_));
    if (place_ == Place::kChannels) what += " at key " + inQuotes(item().channels.back().first);
    return fail(what);
}

bool SceneParser::fail(const std::string& what) {
    const std::string at = where();
    problem_ = at.empty() ? what : at + ": " + what;
    return false;
}

std::string SceneParser::where() const {
    const Field* const field = findField(place_, key_);
    const std::string keyName = field && key_ != Key::kNone ? std::string(".") + field->name : "";
    if (place_ == Place::kOutside) return "";
    if (place_ == Place::kDocument) return keyName.empty() ? "" : keyName.substr(1);
    if (place_ == Place::kItems) return element("items", items_.size());

    const FileItem& current = items_.back();
    const std::string itemText = element("items", items_.size() - 1);
    std::string polygon = itemText + "." + element("polygons", current.data.mesh.polygonCount());
    switch (place_) {
        case Place::kItemTags:
            return itemText + ".tags";
        case Place::kPackages:
            return itemText + "." + element("packages", current.packages.size());
        case Place::kChannels:
            return itemText + ".channels";
        case Place::kPoints:
        case Place::kPoint:
            return itemText + "." + element("points", current.data.mesh.pointCount());
        case Place::kPolygons:
            return polygon;
        case Place::kPolygon:
            return polygon + keyName;
        case Place::kVertices:
            return polygon + "." + element("vertices", vertices_.size());
        case Place::kPolygonTags:
            return polygon + ".tags";
        default:
            return itemText + keyName;
    }
}

}  // namespace tzhost
