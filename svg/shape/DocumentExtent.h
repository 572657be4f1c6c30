// How far shapes reach: the bounds of one element, and the largest y of a document, about which the import
// flips the y axis.
#pragma once

#include "svg/shape/ParsedPaths.h"
#include "svg/text/Length.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {

// Bounds in user units.
struct ElementBounds {
    double minX, maxX, minY, maxY;
};

// The bounds of one element under its own transform alone: ancestors' are not applied. Control points and
// a trailing move count. Zero bounds for a node that is no shape element. False, with zero bounds, when the
// shape item cannot be built or the transform does not parse. May be infinite or not numbers where lengths
// are.
bool elementBounds(const XmlNode& node, const LengthContext& lengths, ElementBounds& bounds,
                   ParsedPaths* paths = nullptr);

// The larger of the bounds' y; 0.0 when there are none. `ok` tells whether the bounds could be had.
double elementMaxY(const XmlNode& node, const LengthContext& lengths, bool& ok, ParsedPaths* paths = nullptr);

// The largest y of all shape elements below a node, at least 0.0; descends into every element, definitions
// too. `ok` is false when the bounds of one fail. May be infinite. `paths`, when given, receives the paths
// parsed.
double documentMaxY(const XmlNode& root, const LengthContext& lengths, bool& ok,
                    ParsedPaths* paths = nullptr);

}  // namespace tzsvg
