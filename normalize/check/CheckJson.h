// The report of a check as JSON, for programs:
//
//     { "format": "tzcheck", "version": 1, "file": "map.svg",
//       "status": "losses",                                  "clean", "losses" or "refused"
//       "imports": true, "exports": true,
//       "findings": [ { "kind": "dropped", "code": "text", "line": 12, "column": 5, "element": "text", "id":
//       "title",
//                       "attribute": "", "text": "text is not imported", "remedy": "becomes outlines ..." }
//                       ],
//       "more": 0 }                                          findings beyond CheckReport::kMostFindings
//
// Lines and columns count from 1; a line of 0 stands for the whole file. An empty remedy: a normalization
// does not help.
#pragma once

#include <QString>
#include <string>

#include "normalize/check/Finding.h"

namespace tznormalize {

// UTF-8, indented. `fileName` may be empty.
std::string checkJson(const CheckReport& report, const QString& fileName);

}  // namespace tznormalize
