#include "host/scenefile/SceneParser.h"

#include <algorithm>
#include <charconv>
#include <locale>
#include <sstream>

#include "host/core/Utf8.h"
#include "host/scene/Tags.h"

namespace tzhost {
namespace {

using Place = ScenePlace;
using Member = SceneMember;

unsigned bit(Member key) {
    return 1U << static_cast<unsigned>(key);
}

std::string inQuotes(std::string_view text) {
    return "\"" + toOneLine(text, 80) + "\"";
}

std::string element(const char* list, size_t index) {
    return list + ("[" + std::to_string(index)) + "]";
}

// RapidJSON does not validate text that is written as escapes.
constexpr const char* kNotUtf8 = "ill-formed UTF-8, or half of a surrogate pair";

bool isInteger(std::string_view number) {
    return number.find_first_of(".eE") == std::string_view::npos;
}

// A number outside the range of a double: std::from_chars() reports too small, which counts as zero, and too
// large alike. Returns false when it is too large.
bool readExtreme(std::string_view number, double& value) {
    std::istringstream stream{std::string(number)};
    stream.imbue(std::locale::classic());
    return static_cast<bool>(stream >> value);
}

}  // namespace

bool SceneParser::RawNumber(const char* text, size_t size, bool /*copy*/) {
    const std::string_view number(text, size);
    if (place_ == Place::kPoint && coordinates_ < point_.size()) return coordinate(number);
    if (place_ == Place::kVertices) return vertex(number);
    return (place_ == Place::kDocument && key_ == Member::kVersion && number == "1") || refuseValue();
}

bool SceneParser::coordinate(std::string_view number) {
    double& value = point_[coordinates_++];
    value = 0;
    if (number == "0") return true;  // a third of all coordinates: drawings are flat
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec != std::errc() && !readExtreme(number, value))
        return fail(inQuotes(number) + " is too big");
    if (number == "-0") value = 0;  // an integer: zero has no sign
    return true;
}

bool SceneParser::vertex(std::string_view number) {
    uint32_t index = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), index);
    if (result.ec == std::errc() && result.ptr == number.data() + number.size()) {
        vertices_.push_back(index);
        return true;
    }
    return isInteger(number) ? fail("there is no point " + toOneLine(number, 80)) : refuseValue();
}

bool SceneParser::String(const char* text, size_t size, bool /*copy*/) {
    const std::string_view value(text, size);
    if (!isUtf8(value)) return fail(kNotUtf8);
    switch (place_) {
        case Place::kPolygonTags:
            item().data.mesh.tagArena().add(polygonTags_, tag_, value);
            return true;
        case Place::kItemTags:
            item().data.tags.push_back({tag_, std::string(value)});
            return true;
        case Place::kChannels:
            item().channels.back().second = value;
            return true;
        case Place::kPackages:
            item().packages.emplace_back(value);
            return true;
        case Place::kPolygon:
            if (key_ != Member::kType) return refuseValue();
            if (const auto type = tagFromName(value)) {
                polygonType_ = *type;
                return true;
            }
            return fail(inQuotes(value) + " is not four ASCII characters");
        case Place::kItem:
            if (key_ == Member::kType && value.empty()) return fail("is empty");
            if (key_ != Member::kType && key_ != Member::kName) return refuseValue();
            (key_ == Member::kType ? item().data.type : item().data.name) = value;
            return true;
        case Place::kDocument:
            return (key_ == Member::kFormat && value == "tzscene") || refuseValue();
        default:
            return refuseValue();
    }
}

bool SceneParser::open(bool object) {
    const SceneField* const field = findSceneField(place_, key_);
    if (!field || field->kind != (object ? SceneKind::kObject : SceneKind::kArray)) return refuseValue();
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
    key_ = Member::kNone;
    return true;
}

bool SceneParser::Key(const char* text, size_t size, bool /*copy*/) {
    const std::string_view name(text, size);
    if (!isUtf8(name)) return fail(kNotUtf8);
    if (place_ == Place::kItemTags || place_ == Place::kPolygonTags) return tagKey(name);
    if (place_ == Place::kChannels) {
        item().channels.emplace_back(name, std::string());
        return true;
    }
    key_ = Member::kNone;
    const SceneField* const field = findSceneField(place_, name);
    if (!field) return fail("unknown key " + inQuotes(name));
    if ((keysSeen() & bit(field->key)) != 0) return fail("key " + inQuotes(name) + " appears twice");
    keysSeen() |= bit(field->key);
    key_ = field->key;
    return true;
}

bool SceneParser::tagKey(std::string_view name) {
    const auto id = tagFromName(name);
    if (!id) return fail("tag name " + inQuotes(name) + " is not four ASCII characters");
    tag_ = *id;
    tags_.push_back(*id);
    return true;
}

bool SceneParser::EndArray(size_t /*size*/) {
    if (place_ == Place::kPoint && !endPoint()) return false;
    place_ = sceneAround(place_);
    key_ = Member::kNone;
    return true;
}

bool SceneParser::EndObject(size_t /*size*/) {
    key_ = Member::kNone;
    bool complete = true;
    switch (place_) {
        case Place::kDocument:
            complete = haveKeys({Member::kFormat, Member::kVersion, Member::kItems});
            break;
        case Place::kItem:
            complete = haveKeys({Member::kType, Member::kName}) && endItem();
            break;
        case Place::kPolygon:
            complete = haveKeys({Member::kType, Member::kVertices}) && endPolygon();
            break;
        case Place::kItemTags:
        case Place::kPolygonTags:
            complete = distinctTags();
            break;
        default:
            break;
    }
    if (!complete) return false;
    place_ = sceneAround(place_);
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

bool SceneParser::haveKeys(std::initializer_list<Member> required) {
    for (const Member key : required) {
        if ((keysSeen() & bit(key)) == 0) {
            return fail("key " + inQuotes(findSceneField(place_, key)->name) + " is missing");
        }
    }
    return true;
}

unsigned& SceneParser::keysSeen() {
    if (place_ == Place::kDocument) return documentKeys_;
    return place_ == Place::kItem ? itemKeys_ : polygonKeys_;
}

bool SceneParser::refuseValue() {
    const SceneField* const field = findSceneField(place_, key_);
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
    const SceneField* const field = findSceneField(place_, key_);
    const std::string keyName = field && key_ != Member::kNone ? std::string(".") + field->name : "";
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
