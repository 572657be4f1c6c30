// The whole: from a document read to the document that is written.
#pragma once

#include <QString>
#include <optional>

#include "normalize/Notes.h"
#include "normalize/convert/WrittenFor.h"
#include "normalize/document/SourceDocument.h"
#include "normalize/style/Cascade.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

// The converted drawing as one svg element: definitions, clip paths, and one group with everything drawn, the
// outline of the page first if the drawing is to be imported. Nothing when references make too many elements
// of it (Refusal::kTooManyElements).
std::optional<OutputElement> convertDrawing(const SourceDocument& source, const Cascade& styles,
                                            const QString& fileName, WrittenFor writtenFor, Notes& notes);

}  // namespace tznormalize
