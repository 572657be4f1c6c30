// Text as outlines of its fonts: a mesh holds no text. Qt lays it out; the words stay readable on the group
// (aria-label).
#pragma once

#include <string>

namespace tznormalize {

class OutputElement;
class SourceElement;
struct Conversion;
struct Place;
struct Target;

// Fills `group` with the outlines of a `text` element that stands at `place` (its own style and transform
// included). Effects, the id and the label are the caller's, as for any group; in a clip path (target.isClip)
// the outlines are areas. Returns the words, to label the group with.
std::string convertText(Conversion& conversion, const SourceElement& text, const Place& place,
                        OutputElement& group, Target& target);

}  // namespace tznormalize
