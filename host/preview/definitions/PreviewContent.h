// Writes the content of a clip path or pattern as a document for Qt's renderer. Called by PreviewPictures.
#pragma once

#include <QByteArray>

#include "host/preview/definitions/PreviewDefinitions.h"

namespace tzhost {

// The shapes, groups, copies and embedded pictures within the element, with the gradients that they are
// painted with. What is written is bounded: depth, elements, and pixels of pictures. Nothing in it leads to
// another file. Of a clip path the shapes alone, in black.
QByteArray definitionContent(const PreviewDefinitions& definitions, int element, bool asClipPath);

}  // namespace tzhost
