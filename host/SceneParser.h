// The scene file as JSON events: takes them from the parser, checks them and gathers items. Used by
// SceneReader.cpp alone. A file may have its keys in any order, so that vertices can be held against the
// points only at the end of an item.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "host/Item.h"

namespace tzhost {

// An item as it stands in the file: its packages and channels are for the scene to make.
struct FileItem {
    ItemData data;
    std::vector<std::string> packages;
    std::vector<std::pair<std::string, std::string>> channels;
};

class SceneParser {
  public:
    // What has been gathered, and what was wrong, with the place in the file: empty when all is well.
    std::vector<FileItem>& items() { return items_; }
    const std::string& problem() const { return problem_; }

    // ---- Events; false ends the parse. The names are the parser's. ----

    bool null() { return refuseValue(); }
    bool boolean(bool value);
    bool number_integer(int64_t value);
    bool number_unsigned(uint64_t value);
    bool number_float(double value, const std::string& text);
    bool string(std::string& value);
    bool binary(nlohmann::json::binary_t& value);
    bool start_object(size_t size);
    bool key(std::string& name);
    bool end_object();
    bool start_array(size_t size);
    bool end_array();
    bool parse_error(size_t position, const std::string& token, const nlohmann::detail::exception& exception);

    // Where in the file the parser is, in the names of the format, and at which key there.
    enum class Place {
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
    enum class Key {
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

  private:
    bool open(bool object);
    bool coordinate(double value);
    bool endItem();
    bool endPolygon();
    bool endPoint();
    bool tagKey(const std::string& name);
    bool distinctTags();
    bool haveKeys(std::initializer_list<Key> required);
    unsigned& keysSeen();
    bool refuseValue();
    bool fail(const std::string& what);
    std::string where() const;
    FileItem& item() { return items_.back(); }

    std::vector<FileItem> items_;
    std::string problem_;
    Place place_ = Place::kOutside;
    Key key_ = Key::kNone;  // of the object that is being read: document, item or polygon
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
