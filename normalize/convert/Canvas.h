// The page that a drawing is laid out on: what a viewer of the original shows, in a size whose coordinates
// come back.
#pragma once

#include <QString>

#include "normalize/convert/WrittenFor.h"
#include "normalize/document/SourceDocument.h"
#include "normalize/geometry/Matrix.h"
#include "normalize/style/Cascade.h"
#include "normalize/write/Grid.h"

namespace tznormalize {

struct Canvas {
    Matrix base;  // from the root's user space to the page, whose corner is at (0, 0)
    double width = 0.0;
    double height = 0.0;
    Viewport viewport;  // of the root's children, for percentages
    Grid grid;
    double pixel = 1.0;  // of a screen, in units of the page
};

// The page has the units of the view box, so that it is what the author drew on, times a power of ten that
// brings it to between 10 and 20,000 units. [trap: the export writes six digits, and small numbers with
// exponents, which cannot come back] A drawing that says no size gets that of all that it draws.
Canvas canvasOf(const SourceDocument& source, const Cascade& styles, const QString& fileName,
                WrittenFor writtenFor);

}  // namespace tznormalize
