// The scene file as JSON events: takes them from RapidJSON, checks them and gathers items. Used by
// SceneReader.cpp alone. A file may have its keys in any order, so that vertices can be checked against the
// points only at the end of an item.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/io/Json.h"
#include "host/scene/Item.h"
#include "host/scenefile/SceneFormat.h"

namespace tzhost {

// An item as it is in the file. Its packages and channels are made by the scene afterwards.
struct FileItem {
    ItemData data;
    std::vector<std::string> packages;
    std::vector<std::pair<std::string, std::string>> channels;
};

class SceneParser : public JsonHandler<SceneParser> {
  public:
    // The items, and the error with its place in the file; empty when there is none.
    std::vector<FileItem>& items() { return items_; }
    const std::string& problem() const { return problem_; }

    // ---- Events; false ends the parse. The names are RapidJSON's. ----

    bool Default() { return refuseValue(); }  // null, true, false
    bool RawNumber(const char* text, size_t size, bool copy);
    bool String(const char* text, size_t size, bool copy);
    bool StartObject() { return open(true); }
    bool Key(const char* text, size_t size, bool copy);
    bool EndObject(size_t size);
    bool StartArray() { return open(false); }
    bool EndArray(size_t size);

  private:
    bool open(bool object);
    bool coordinate(std::string_view number);
    bool vertex(std::string_view number);
    bool endItem();
    bool endPolygon();
    bool endPoint();
    bool tagKey(std::string_view name);
    bool distinctTags();
    bool haveKeys(std::initializer_list<SceneMember> required);
    unsigned& keysSeen();
    bool refuseValue();
    bool fail(const std::string& what);
    std::string where() const;
    FileItem& item() { return items_.back(); }

    std::vector<FileItem> items_;
    std::string problem_;
    ScenePlace place_ = ScenePlace::kOutside;
    SceneMember key_ = SceneMember::kNone;  // of the object that is being read: document, item or polygon
    unsigned documentKeys_ = 0;
    unsigned itemKeys_ = 0;
    unsigned polygonKeys_ = 0;

    // What is being read, until it is complete.
    std::array<double, 3> point_{};
    size_t coordinates_ = 0;
    TzTagId polygonType_ = 0;
    std::vector<uint32_t> vertices_;
    TagRun polygonTags_;
    TzTagId tag_ = 0;
    std::vector<TzTagId> tags_;  // of the object that is being read
};

}  // namespace tzhost
