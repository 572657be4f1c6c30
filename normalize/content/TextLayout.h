// Where the letters of a text element stand: chunks and anchors, lists of places, lengths, paths, lines along
// the letters.
#pragma once

#include <vector>

#include "normalize/content/TextContent.h"

namespace tznormalize {

// An outline in the user space of the text, painted as a span is.
struct TextPart {
    size_t span;
    Path path;
};

// In the order in which they are drawn. Needs a QGuiApplication.
std::vector<TextPart> layOutText(Conversion& conversion, const TextContent& content);

}  // namespace tznormalize
