// What is imported and cannot be exported then.
#pragma once

#include "normalize/check/CheckedDocument.h"
#include "normalize/check/ImportRules.h"

namespace tznormalize {

void checkExport(const CheckedDocument& document, const ImportedGeometry& geometry, CheckReport& report);

}  // namespace tznormalize
