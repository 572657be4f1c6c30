// The letters of a text, shaped and cut where they are placed on their own.
#pragma once

#include <memory>
#include <vector>

#include "normalize/content/ShapedRun.h"
#include "normalize/content/TextContent.h"

namespace tznormalize {

// Letters that keep together: a whole run, or what follows a character that has a place.
struct TextPiece {
    size_t span;
    const ShapedRun* run;
    int from, to;           // in the run
    size_t character;       // the first, in TextContent::words
    CharacterPlace place;   // of the first
    double left;            // where they begin in the run
    double advance;         // to where the next piece begins
    double stretch = 1.0;   // along the line
    Matrix matrix = {};     // from the run's space to that of the text
    bool isHidden = false;  // off the end of its path
};

struct TextPieces {
    std::vector<std::unique_ptr<ShapedRun>> runs;
    std::vector<TextPiece> pieces;
};

// Shapes all runs, and makes the pieces' advances fit what textLength asks for.
TextPieces cutText(Conversion& conversion, const TextContent& content);

}  // namespace tznormalize
