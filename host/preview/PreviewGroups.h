// The groups of a drawing, as a scene keeps them: what their shapes inherit, and what is done to all of a
// group together. Used by Preview.cpp.
#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "host/preview/PreviewProperties.h"

namespace tzhost {

// What is done to something as a whole; ids where there is something of the kind.
struct PreviewEffects {
    double opacity = 1.0;
    QString clipPath;
    QString mask;
    QString filter;

    explicit PreviewEffects(const Properties& properties = {});
    bool any() const { return opacity < 1.0 || !clipPath.isEmpty() || !mask.isEmpty() || !filter.isEmpty(); }
};

struct PreviewGroup {
    Properties inherited;  // by what is in the group
    bool hidden = false;   // or in one that is
    PreviewEffects effects;
    // The nearest group around this one, or this one itself, that is drawn as a whole; null when none is.
    const PreviewGroup* whole = nullptr;
    const PreviewGroup* wholeAround = nullptr;  // the next one around `whole`
};

class PreviewGroups {
  public:
    // The texts of the channels "groupdefs" and "svgrootdef". Of records that do not parse those before the
    // fault count.
    PreviewGroups(std::string_view records, std::string_view root);
    PreviewGroups(const PreviewGroups&) = delete;
    PreviewGroups& operator=(const PreviewGroups&) = delete;

    // The group of that number; for other text the root.
    const PreviewGroup& find(std::string_view number) const;

  private:
    void add(uint32_t number, const PreviewGroup& parent, std::string_view attributes);

    PreviewGroup root_;
    std::unordered_map<uint32_t, PreviewGroup> groups_;  // their places stay
};

}  // namespace tzhost
