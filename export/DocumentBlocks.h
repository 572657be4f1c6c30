// The parts of the document that are no polygons: the root element, definitions, clip paths and Illustrator
// data, from the texts that the packages of the meshes keep. Called by the saver, in this order.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "export/OutputDocument.h"

class CTzSceneSaver;

namespace tzsvg {

// What the package of one mesh keeps of a document.
struct StoredTexts {
    std::string doctype;  // goes to the file as it is
    QString root;
    QString definitions;
    QString clipPaths;
    QString groups;
    QString illustratorData;
};

// The texts of the saver's current item; nothing when it does not carry the package. A channel that does not
// exist reads as empty; one that cannot be read throws CTzError(kTzFailed), whatever the host's code is.
std::optional<StoredTexts> readStoredTexts(const CTzSceneSaver& saver);

// The texts of all packages of a scene, in the order of the meshes. With several, equal texts are written
// once.
using PackageTexts = std::vector<const StoredTexts*>;

// Makes the root element: the first stored one, with the namespace declarations that only later ones have; or
// a new one. False when the stored one cannot be used, and so for the texts below.
bool addRoot(OutputDocument& document, const PackageTexts& packages, OutputElement*& root);

// Appends the definitions to the root, in a "defs" element; the clip paths, directly.
bool addDefinitions(OutputDocument& document, const PackageTexts& packages, OutputElement& root);
bool addClipPaths(const PackageTexts& packages, OutputElement& root);

// Appends the Illustrator data to the root, behind the reference to it that Illustrator looks for.
bool addIllustratorData(const PackageTexts& packages, OutputElement& root);

}  // namespace tzsvg
