// The style attributes of an element from the tags of its polygon.
#pragma once

#include <string>

namespace tzsvg {

class SVGSaver;

// Sets the attributes that the tags of the saver's current polygon give on its element, in ascending order of
// the tag IDs, and the defaults of those that are absent.
void WriteStyleAttributes(SVGSaver& saver);

// The stroke colour for a tag text that is no "#" colour: read as "rgb: %f %f %f", components from 0 to 1.
// What cannot be read is 0, so that "none" and colour names come out as "#000000". Meant so, and for the
// stroke alone: fills come back as they are. A stroke that the host has set is in this form, and nothing
// tells the two apart. StyleAttributes/strokeColour and Saver/scenes (style) pin it.
std::string strokeColour(const std::string& text);

// The default stroke width as Qt prints it in an attribute, for a mesh of that largest extent.
std::string defaultStrokeWidth(double largestExtent);

}  // namespace tzsvg
