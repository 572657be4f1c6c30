// Groups with their effects and the attributes that they keep.
#pragma once

#include "normalize/convert/Conversion.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

// A group that is being filled: made before its children are converted, finished afterwards.
class Group {
  public:
    // For `element`, which stands at `place`, its own transform and style included.
    Group(Conversion& conversion, const SourceElement& element, const Place& place, Target& target);
    ~Group();
    Group(const Group&) = delete;
    Group& operator=(const Group&) = delete;

    OutputElement& output() { return group_; }

    // Nothing outside of this is shown; a rectangle in page space (the viewport of a nested svg element).
    void clipTo(const Path& outline);

    // Sets opacity, clip path, mask, filter, blend mode and the attributes kept, and appends the group to
    // `out`. An empty group is left out.
    void finish(OutputElement& out);

  private:
    Conversion& conversion_;
    const SourceElement& element_;
    const Place& place_;
    Target& target_;
    OutputElement group_;
    std::optional<Path> clip_;
    size_t firstPath_ = 0;
    bool hasEffects_ = false;
    bool isCollecting_ = false;
};

}  // namespace tznormalize
