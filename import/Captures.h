// The captures: what a mesh cannot hold, out of the document and into text. Pure functions; the order in
// which they run and the channels they fill are import/PackageCapture.h's.
#pragma once

#include <QString>

#include "import/DocumentSurvey.h"
#include "import/GroupTable.h"
#include "svg/tree/XmlDocument.h"

namespace tzsvg {

// Definitions: the children of every "defs", then patterns, linear and radial gradients outside "defs".
// Without line breaks and tabs. Empty when there are none. What is nested is in it once for each level:
// throws kTzOutOfMemory when it is longer than `room`.
QString captureDefinitions(const DocumentSurvey& survey, qint64 room);

// Every clip path, whole, also those inside "defs": both copies are kept on purpose, the saver writes each
// channel back by itself. Definitions/whatGoesIn pins it. Without line breaks and tabs. Empty when there are
// none; `room` as above.
QString captureClipPaths(const DocumentSurvey& survey, qint64 room);

// Numbers every group of the document in `table`, and writes one record for each group that is not directly
// inside a container of definitions. False when a group's parent is neither the root nor a group.
bool captureGroups(const DocumentSurvey& survey, GroupTable& table, QString& records);

// The document type declaration, with an internal subset when it has entities or notations or the document
// comes from Illustrator. Empty when the document has none.
QString captureDoctype(const XmlDocument& document);

// The root element without its children and its geometry ("x", "y", "width", "height", "viewBox").
QString captureRoot(const XmlNode& root);

// The private data elements of Illustrator, unchanged. Empty when there are none.
QString captureIllustratorData(const DocumentSurvey& survey);

// Removes line feeds, carriage returns and tabs, as characters and as the character references Qt writes for
// them.
QString withoutLineBreaks(QString text);

}  // namespace tzsvg
