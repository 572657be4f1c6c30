// Text as outlines of its fonts: a mesh holds no text. Qt lays it out; the words stay readable on the group
// (aria-label).
#pragma once

namespace tznormalize {

class OutputElement;
class SourceElement;
struct Conversion;
struct Place;
struct Target;

// Fills `group` with the outlines of a `text` element that stands at `place` (its own style and transform
// included), and sets the words on it. Effects and the id are the caller's, as for any group. In a clip path
// (target.isClip) the outlines go there as they are. Needs the drawing function of shapes, with the box of
// the whole text for its paints:
//     void drawOutline(Conversion&, const Path&, const Place&, const PlacedPaths& box, OutputElement& out,
//     Target&)   [convert/]
void convertText(Conversion& conversion, const SourceElement& text, const Place& place, OutputElement& group,
                 Target& target);

}  // namespace tznormalize
