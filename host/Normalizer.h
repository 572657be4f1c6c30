// The normalizer: rewrites any drawing into the form that survives an import and an export. It is a library
// of its own, libtznormalize.so, which uses Qt and is loaded when it is needed first. Used by Drawing and
// `tzhost normalize`.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/io/InputFile.h"

namespace tzhost {

// One thing that was changed, approximated or left out.
struct NormalizerNote {
    std::string
        code;  // "left-out", "approximated", "carried" (in another shape), "resolved" (said in another way)
    int64_t line = 0;  // of the element, from 1, as is the column
    int64_t column = 0;
    std::string element;
    std::string id;         // may be empty
    std::string attribute;  // may be empty
    std::string text;
};

// What a drawing is to become.
enum class Purpose { kScene, kImage };

struct NormalizedText {
    std::string document;  // UTF-8, one line
    std::vector<NormalizerNote> notes;
    uint64_t moreNotes = 0;  // beyond those of the list
    std::string notesJson;   // all of this as the normalizer wrote it
};

// Throws OperationError: steps "open", "load normalizer" and "normalize", whose reason says what is wrong
// with the drawing and where. Linked pictures are looked for beside the file, those of a text in the current
// folder. [any thread]
NormalizedText normalizeFile(const InputFile& file, Purpose purpose = Purpose::kScene);

}  // namespace tzhost
