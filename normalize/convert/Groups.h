// Groups with their effects and the attributes that they keep.
#pragma once

#include "normalize/convert/Conversion.h"
#include "normalize/paint/Effect.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

// A group that is being filled: made before its children are converted, finished afterwards.
class Group {
  public:
    // For `element`, which stands at `place`, its own transform and style included. Boxes for its clip path,
    // mask and filter are taken of what is converted until it is finished.
    Group(Conversion& conversion, const SourceElement& element, const Place& place, Target& target);

    // For one that is known to consist of `object`.
    Group(Conversion& conversion, const SourceElement& element, const Place& place, Target& target,
          const PlacedPaths& object);

    ~Group();
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;

    OutputElement& output() { return group_; }

    // Nothing is shown outside of `outline`, which is in page space: the viewport of a nested svg element.
    // Called before anything is converted into the group.
    void clipTo(const Path& outline);

    // What the group says, for those who cannot see it; kept beside the element's own attributes.
    void setLabel(std::string words) { label_ = std::move(words); }

    enum class Names { kKept, kLeft };

    // Sets opacity, clip path, mask, filter and blend mode, id and the attributes kept if `names` says so,
    // and appends the group to `out`. An empty group is left out.
    void finish(OutputElement& out, Names names = Names::kKept);

  private:
    bool setEffects(const PlacedPaths& object);
    void wrapInClip();
    void finishInClip(OutputElement& out);

    Conversion& conversion_;
    const SourceElement& element_;
    const Place& place_;
    Target& target_;
    OutputElement group_{"g"};
    std::optional<PlacedPaths> object_;
    std::optional<Path> clip_;
    std::string label_;
    size_t firstPath_ = 0;
    size_t clipCount_ = 0;
    std::optional<Box> drawnBefore_;  // what was drawn without it
    bool hasFilter_ = false;
    bool isCollecting_ = false;
};

// Whether the style has a filter, which may move paint onto the page that was not on it.
bool hasFilter(const Conversion& conversion, const Style& style);

// Whether the style has what only a group can carry: a mask, a filter or a blend mode.
bool hasGroupEffect(const Conversion& conversion, const Style& style);

// Tells what of an effect could not be carried.
void noteEffect(Conversion& conversion, const SourceElement& element, const Effect& effect,
                const char* attribute);

// Whether it is a group that nothing is set on.
bool isPlainGroup(const OutputElement& element);

// Sets the attributes of a group that users and programs know it by: its class, data, those of other
// namespaces.
void keepAttributes(const SourceElement& element, OutputElement& out);

// Keeps the id of something drawn, where it is the only one of that id.
void keepId(const Conversion& conversion, const SourceElement& element, OutputElement& out,
            const Target& target);

}  // namespace tznormalize
