// Elements that are dropped, or drawn though they should not be; and all other losses, shape by shape.
#pragma once

#include "normalize/check/CheckedDocument.h"
#include "normalize/check/ImportRules.h"

namespace tznormalize {

// Adds what comes back otherwise, or not at all. Nothing when the normalizer does not read the document.
void checkLosses(const CheckedDocument& document, const ImportedGeometry& geometry, CheckReport& report);

}  // namespace tznormalize
