// The writer of polygons: one element for each, or one for all pieces of a path that the loader split.
#pragma once

#include <string>

namespace tzsvg {

class SVGSaver;

class PolygonWriter {
  public:
    // Writes the saver's current polygon, of the type `LINE`, as a "polyline", "polygon" or "line". False,
    // and nothing is added, when it cannot be written: its tags name a group that there is not, or say
    // nothing of its kind, or a vertex cannot be projected.
    static bool writeLine(SVGSaver& saver);

    // Writes the saver's current polygon, of the type `BEZR`, as a "path". A piece of a split path other than
    // its last adds no element. False as above.
    bool writePath(SVGSaver& saver);

    // Forgets the pieces of the path that is being joined.
    void reset() { *this = PolygonWriter(); }

  private:
    std::string subPaths_;       // the path data of the pieces since the last that starts a path
    bool subPathsUsed_ = false;  // whether an element has them already
    size_t repeated_ = 0;        // how much of them went into further elements
};

}  // namespace tzsvg
