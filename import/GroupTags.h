// Group tags: which groups enclose the shape that a polygon came from. Called by the tag chain.
#pragma once

namespace tzsvg {

class SVGLoader;
class XmlNode;

// Stores the parent group's number as `PGRP`, its name as `VGRP`, and the chain of enclosing groups as `GSVG`
// and `PICK`. True without tags when the parent is no numbered group; false for a node that is no shape
// element or has no parent.
bool writeGroupTags(SVGLoader& loader, const XmlNode& node);

}  // namespace tzsvg
