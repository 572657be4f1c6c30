// Says of a drawing, without changing anything, whether the module imports and exports it, and what of it is
// refused, dropped or changed on the way. The module's own readers are asked (svg/), so that the answer is
// the module's; what the drawing means is read by the normalizer's. A loss is where the two differ.
//
//     Recognition    why a file is no document for the import: no SVG, not well-formed, line breaks, limits
//     ImportRules    values that refuse the import, and groups where it wants none
//     ImageRules     what refuses a drawing as an image
//     ExportRules    what is imported and cannot be exported
//     ElementLosses  elements that are dropped, or drawn though they should not be
//     ShapeLosses    outlines, paints and strokes that come back otherwise
//     PageLosses     the page and the place on it
#pragma once

#include <QByteArray>

#include "normalize/check/Finding.h"

namespace tznormalize {

// Checks a drawing. [any thread]
CheckReport checkDrawing(const QByteArray& bytes);

// The reason for which a drawing was refused as an image, if the check knows it; asked only then. The name is
// that of its file: links lead from there.
CheckReport checkImage(const QByteArray& bytes, const QString& fileName);

// The report on a file that cannot be read: it is refused.
CheckReport unreadableFile();

}  // namespace tznormalize
