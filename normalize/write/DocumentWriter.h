// The result as text.
#pragma once

#include <QByteArray>

#include "normalize/document/SourceDocument.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

// One line, in UTF-8, with the XML declaration and a line feed at the end; the namespaces that are used are
// declared at the root. [trap: the import joins lines without a blank, and knows a document type on one line
// only]
QByteArray writeDocument(const OutputElement& root, const SourceDocument& source);

}  // namespace tznormalize
