// Pictures. A mesh holds none, but definitions come back word for word: a picture rides as the fill pattern
// of a polygon.
#pragma once

namespace tznormalize {

class OutputElement;
class SourceElement;
struct Conversion;
struct Place;
struct Target;

// Fills `group` with an `image` element that stands at `place` (its own style and transform included): a
// polygon whose fill is a pattern that holds the picture; in a definition (not target.isDrawn) the picture
// itself. What can be carried: EmbeddedPicture.h.
void convertImage(Conversion& conversion, const SourceElement& image, const Place& place,
                  OutputElement& group, Target& target);

}  // namespace tznormalize
