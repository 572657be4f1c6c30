// The notes of a normalization as JSON, for `--notes FILE` and for programs:
//
//     { "format": "tznotes", "version": 1, "file": "map.svg",
//       "refused": { "code": "not-well-formed", "line": 3, "column": 7, "reason": "…" },      only when
//       refused "notes": [ { "code": "carried", "line": 12, "column": 5, "element": "text", "id": "title",
//                    "attribute": "", "text": "…" } ],
//       "more": 0 }                                                  notes beyond Notes::kMostNotes
//
// Lines and columns count from 1; a line of 0 stands for the whole file.
#pragma once

#include <QString>
#include <string>

#include "normalize/Normalize.h"

namespace tznormalize {

// UTF-8, indented. `fileName` may be empty.
std::string notesJson(const Normalized& normalized, const QString& fileName);

// "not-svg", "not-well-formed", "too-deep", "too-many-elements", "too-large", "unreadable".
const char* refusalText(Refusal refusal);

}  // namespace tznormalize
