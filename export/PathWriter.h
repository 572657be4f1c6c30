// The writer of Bezier polygons: "path" elements, several polygons joined into one where the loader split a
// path.
#pragma once

#include <string>

#include "export/ErrorState.h"

namespace tzsvg {

class SVGSaver;

class PathWriter {
  public:
    // Writes the saver's current polygon, of the type `BEZR`. A piece of a split path other than its last
    // adds no element. kPolygon when the polygon cannot be written; nothing is added then.
    ErrorState write(SVGSaver& saver);

    // Forgets the pieces of the path that is being joined.
    void reset() { *this = PathWriter(); }

  private:
    std::string subPaths_;       // the path data of the pieces since the last that starts a path
    bool subPathsUsed_ = false;  // whether an element has them already
    size_t repeated_ = 0;        // how much of them went into further elements
};

}  // namespace tzsvg
