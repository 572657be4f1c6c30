// Fills the package of the loaded item: runs the captures in their order and reads the root element on the
// way. Called by SVGLoader between preparation and walk.
#pragma once

#include "import/DocumentSurvey.h"

namespace tzsvg {

class SVGLoader;

// Captures private data, document type, root element, definitions, clip paths and groups into their channels.
// The root also sets the loader's percent references and view box. False when the document has no root or its
// groups cannot be recorded; channels already written stay. Failures of the host throw CTzError.
bool captureIntoPackage(SVGLoader& loader, const DocumentSurvey& survey);

}  // namespace tzsvg
