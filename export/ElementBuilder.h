// The element of one polygon: put together attribute by attribute, then saved as text. Used by the polygon
// writers, through the saver.
#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QString>
#include <QTextStream>
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

// Elements of one name with the same attributes share one element of the toolkit's, which gets their values
// in turn. So a million polygons do not need a million elements in memory, which would cost more than all
// other work on them, and what is saved is to the byte what the toolkit saves of an element of their own.
class ElementBuilder {
  public:
    // Starts an element.
    void start(ElementName name);

    // Sets an attribute to a text in UTF-8. Attributes are set in the order of their names, each at most
    // once.
    void set(AttributeName name, std::string_view text);

    // Appends the element to the text, in UTF-8, with the line end that the toolkit puts behind an element.
    void save(std::string& text);

  private:
    struct Value {
        std::string bytes;
        QString text;
    };
    struct Shared {
        QDomElement element;
        std::vector<QDomAttr> attributes;  // those of `set_`, in its order
        std::vector<QString> texts;        // what they are set to
    };
    Shared makeShared();

    // The last value of each attribute: a drawing has a few colours and widths, which come in runs.
    std::array<Value, kAttributeCount> values_;
    ElementName name_ = ElementName::kLine;
    std::vector<AttributeName> set_;  // the attributes of the element
    uint32_t key_ = 0;                // a bit for each of them, and the name

    QDomDocument document_;  // what the shared elements are made of
    std::unordered_map<uint32_t, Shared> shared_;
    QString saved_;
    QTextStream stream_{&saved_};
};

}  // namespace tzsvg
