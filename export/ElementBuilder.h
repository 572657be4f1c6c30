// The element of one polygon: put together attribute by attribute, then saved as text. Used by the polygon
// writers, through the saver.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tzsvg {

enum class ElementName { kLine, kPolyline, kPolygon, kPath };

// The attributes that elements of polygons have, in the order in which they are set: geometry, then style in
// ascending order of the tags that carry it.
enum class AttributeName {
    kX1,
    kY1,
    kX2,
    kY2,
    kPoints,
    kData,
    kClipPath,
    kDashArray,
    kDashOffset,
    kId,
    kFill,
    kFillOpacity,
    kFillRule,
    kStrokeOpacity,
    kLineCap,
    kStroke,
    kLineJoin,
    kStrokeWidth,
    kMiterLimit,
    kOpacity,
    kTransform,
};

constexpr size_t kAttributeCount = static_cast<size_t>(AttributeName::kTransform) + 1;

// Builds elements one after the other, without a tree: their values are kept as they are written, and the
// order of their attributes (svg/tree/SavedForm.h) is found once for each set of them.
class ElementBuilder {
  public:
    // Starts an element.
    void start(ElementName name);

    // Sets an attribute to a text in UTF-8. Attributes are set in the order of their names, each at most
    // once.
    void set(AttributeName name, std::string_view text);

    // Appends the element to the text, in UTF-8, without a line end.
    void save(std::string& text);

  private:
    struct Value {
        std::string bytes;
        std::string saved;  // name="value", with a blank before
    };
    using Order = std::vector<AttributeName>;
    Order makeOrder() const;

    // The last value of each attribute: a drawing has a few colours and widths, which come in runs.
    std::array<Value, kAttributeCount> values_;
    ElementName name_ = ElementName::kLine;
    std::vector<AttributeName> set_;  // the attributes of the element
    uint32_t key_ = 0;                // a bit for each of them
    std::unordered_map<uint32_t, Order> orders_;
};

}  // namespace tzsvg
