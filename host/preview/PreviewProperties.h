// The presentation properties that a preview draws by: those of a shape come from its tags, what it lacks
// from its groups. Used by PreviewGroups and PreviewStyle.
#pragma once

#include <QString>
#include <QXmlStreamAttributes>
#include <array>
#include <cstdint>

#include "host/scene/Tags.h"

namespace tzhost {

enum class Property : uint8_t {
    // Those that shapes take from their groups.
    kFill,
    kFillOpacity,
    kFillRule,
    kStroke,
    kStrokeOpacity,
    kStrokeWidth,
    kDashes,
    kDashOffset,
    kCap,
    kJoin,
    kMiterLimit,
    kColor,
    kVisibility,
    // Those that hold for an element by itself.
    kOpacity,
    kClipPath,
    kMask,
    kFilter,
    kDisplay,
};

// Texts by property, empty where there is none.
class Properties {
  public:
    const QString& operator[](Property property) const { return texts_[static_cast<size_t>(property)]; }

    // What an element within takes from these.
    Properties passedOn() const;

    // These with an element's own above them: attributes, and its style before its attributes.
    void apply(const QXmlStreamAttributes& attributes);

    // These with a polygon's own above them. Its tags come before its style: a host may have changed them.
    void apply(const TagRun& tags);

    bool isHidden() const;

  private:
    static constexpr size_t kCount = static_cast<size_t>(Property::kDisplay) + 1;

    void set(size_t property, const QString& text);

    std::array<QString, kCount> texts_;
};

}  // namespace tzhost
