// The parts of the document that are no polygons: the root element, definitions, clip paths and Illustrator
// data, from the texts that the packages of the meshes keep. Called by the saver, in this order.
#pragma once

#include <vector>

#include "export/ErrorState.h"
#include "export/OutputDocument.h"
#include "export/StoredTexts.h"

namespace tzsvg {

// The texts of all packages of a scene, in the order of the meshes. With several, equal texts are written
// once.
using PackageTexts = std::vector<const StoredTexts*>;

// Makes the root element: the first stored one, with the namespace declarations that only later ones have; or
// a new one.
ErrorState addRoot(OutputDocument& document, const PackageTexts& packages, OutputElement*& root);

// Appends the definitions to the root, in a "defs" element; the clip paths, directly.
ErrorState addDefinitions(OutputDocument& document, const PackageTexts& packages, OutputElement& root);
ErrorState addClipPaths(const PackageTexts& packages, OutputElement& root);

// Appends the Illustrator data to the root, behind the reference to it that Illustrator looks for.
ErrorState addIllustratorData(const PackageTexts& packages, OutputElement& root);

}  // namespace tzsvg
