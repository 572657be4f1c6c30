// Pictures that a drawing links to, as data URIs.
#pragma once

#include <QStringView>
#include <string>

namespace tznormalize {

class SourceElement;
struct Conversion;

// The largest picture that is embedded, in bytes of its file.
constexpr long long kLargestPicture = 64LL * 1024 * 1024;

// The data URI for the link of `element`: a data URI without its blanks, or the file beside the drawing. Files are embedded when they lie in the drawing's
// folder or below and are PNG, JPEG or GIF; never is anything fetched. Empty, with a note on `element`, when it cannot be
// carried.
std::string pictureData(Conversion& conversion, const SourceElement& element, QStringView link);

}  // namespace tznormalize
