// The words of a text element with everything that its elements say about them, before any font is asked.
#pragma once

#include <QString>
#include <map>
#include <optional>
#include <vector>

#include "normalize/convert/Conversion.h"

namespace tznormalize {

// Lines along the letters that an element asks for; they are painted as that element is.
struct Decoration {
    size_t span;  // whose fill and stroke they have
    bool isUnderline = false;
    bool isOverline = false;
    bool isLineThrough = false;
};

// The characters of one element: text, tspan, tref, textPath or a link.
struct TextSpan {
    const SourceElement* element;
    Place place;
    size_t from = 0;  // in TextContent::words, its descendants included
    size_t to = 0;
    double lift = 0.0;  // of the baseline, in user units, those around included
    std::vector<Decoration> decorations;
    const SourceElement* path = nullptr;  // the textPath element around or itself; null when not on a path
};

// Characters that follow one another in the same element.
struct TextRun {
    size_t span;
    size_t from;
    size_t to;
};

// What x, y, dx, dy and rotate say about one character.
struct CharacterPlace {
    std::optional<double> x, y;
    double dx = 0.0;
    double dy = 0.0;
    double rotate = 0.0;

    bool isMoved() const { return x || y || dx != 0.0 || dy != 0.0; }
};

struct TextContent {
    // How many characters one text may have. More are cut off, with a note.
    static constexpr int kMostCharacters = 50'000;

    QString words;  // as they are shown: white space by the rules of xml:space
    std::vector<TextSpan> spans;
    std::vector<TextRun> runs;                    // in the order of the words
    std::map<size_t, CharacterPlace> characters;  // by index in `words`; few have any
};

// Reads the words of a `text` element that stands at `place`.
TextContent readTextContent(Conversion& conversion, const SourceElement& text, const Place& place);

}  // namespace tznormalize
