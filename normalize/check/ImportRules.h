// What makes the import refuse a document that it has read, and the geometry that it makes of one it takes.
#pragma once

#include "normalize/check/CheckedDocument.h"
#include "svg/text/Length.h"

namespace tznormalize {

// What an import leaves in the scene, as far as the export depends on it.
struct ImportedGeometry {
    double flipHeight = 0.0;       // a whole number
    tzsvg::LengthContext lengths;  // as it holds for the shapes
    size_t points = 0;
    bool spansPlane = false;  // the points do not all lie on one line: the export looks for their plane

    // The box of all points, y upwards.
    double left = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    double top = 0.0;
};

// Adds the reasons for which the import refuses the document. It is changed as the import changes it: what a
// "switch" holds takes its place.
ImportedGeometry checkImport(const CheckedDocument& document, CheckReport& report);

}  // namespace tznormalize
