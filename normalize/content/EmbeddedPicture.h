// Pictures that a drawing links to, as data URIs.
#pragma once

#include <QStringView>
#include <string>

namespace tznormalize {

class SourceElement;
struct Conversion;

// The largest picture that is carried, and how much all pictures of a drawing may come to, each counted as
// often as it is drawn: a few nested `use` elements can ask for any number of copies. Bytes of data URIs.
constexpr size_t kLargestPicture = size_t(96) << 20;
constexpr size_t kMostPictureBytes = size_t(256) << 20;

// The data URI for the link of `element`: a data URI without its blanks, or the file beside the drawing.
// Files are embedded when they lie in the drawing's folder or below and are PNG, JPEG or GIF; never is
// anything fetched. Empty, with a note on `element`, when it cannot be carried.
std::string pictureData(Conversion& conversion, const SourceElement& element, QStringView link);

}  // namespace tznormalize
