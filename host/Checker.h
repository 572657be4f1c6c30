// The check: whether the module takes a drawing, and what of it would be refused, dropped or changed. It is a
// part of the normalizer's library, and like it loaded when it is needed first. Used by `tzhost check`, and
// to say why a drawing was refused.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/Normalizer.h"
#include "host/io/InputFile.h"

namespace tzhost {

// One construct that does not get through as it is.
struct CheckFinding {
    std::string kind;  // "import-refused", "export-refused", "dropped", "changed"
    std::string code;  // "number-form"
    int64_t line = 0;  // of the element, from 1, as is the column; 0: of the whole file
    int64_t column = 0;
    std::string element;  // may be empty, as may the next three
    std::string id;
    std::string attribute;
    std::string text;    // "1e-5 has an exponent"
    std::string remedy;  // what a normalization does about it; empty: nothing

    bool isRefusal() const { return kind == "import-refused" || kind == "export-refused"; }
};

struct DrawingCheck {
    bool isImported = false;
    bool isExported = false;
    std::vector<CheckFinding> findings;  // refusals first
    uint64_t more = 0;                   // beyond those of the list
    std::string json;                    // all of this as the check wrote it

    bool isRefused() const { return !isImported || !isExported; }
};

// Throws OperationError: steps "open", "load normalizer" and "check". [any thread]
DrawingCheck checkDrawing(const InputFile& file, Purpose purpose = Purpose::kScene);

// "<path id="a"> d: "1e-5" has an exponent", without the file and the place.
std::string describe(const CheckFinding& finding);

// "; --normalize: the number is written plainly": what a normalization does about it; empty when it does
// nothing.
std::string hintOf(const CheckFinding& finding);

// The description with the place before it, and behind it `more` and the hint.
std::string explain(const CheckFinding& finding, const std::string& more = {});

}  // namespace tzhost
