// The names by which a drawing is kept in a scene: the package, its channels and the tags. Written by the
// import, read back by the export.
#pragma once

#include "hostsdk/TzTypes.h"

namespace tzsvg {

constexpr char kPackageName[] = "svgloader.package";

// The package's channels, in order.
constexpr char kChannelDefinitions[] = "svgdefs";
constexpr char kChannelClipPaths[] = "clipdefs";
constexpr char kChannelGroups[] = "groupdefs";
constexpr char kChannelDoctype[] = "svgdoctype";
constexpr char kChannelRoot[] = "svgrootdef";
constexpr char kChannelIllustrator[] = "svgillustratorcdata";

// Presentation tags of polygons.
constexpr TzTagId kTagFill = tzTag("FILL");
constexpr TzTagId kTagFillOpacity = tzTag("FILO");
constexpr TzTagId kTagFillRule = tzTag("FILR");
constexpr TzTagId kTagOpacity = tzTag("OPAC");
constexpr TzTagId kTagStyle = tzTag("STYL");
constexpr TzTagId kTagStrokeWidth = tzTag("LWID");
constexpr TzTagId kTagStroke = tzTag("LCOL");
constexpr TzTagId kTagStrokeOpacity = tzTag("LALF");
constexpr TzTagId kTagDashArray = tzTag("DARR");
constexpr TzTagId kTagDashOffset = tzTag("DOFF");
constexpr TzTagId kTagLineCap = tzTag("LCAP");
constexpr TzTagId kTagLineJoin = tzTag("LJON");
constexpr TzTagId kTagMiterLimit = tzTag("MLIM");
constexpr TzTagId kTagClipPath = tzTag("CPAT");

// Structure tags of polygons.
constexpr TzTagId kTagPrimitive = tzTag("PRIM");     // the element kind, for some with its numbers
constexpr TzTagId kTagParentGroup = tzTag("PGRP");   // the number of the enclosing group
constexpr TzTagId kTagGroupName = tzTag("VGRP");     // its "id"
constexpr TzTagId kTagGroupChain = tzTag("GSVG");    // the ids of all enclosing groups, outermost first
constexpr TzTagId kTagPick = tzTag("PICK");          // the same text
constexpr TzTagId kTagElementId = tzTag("ELID");     // the "id"
constexpr TzTagId kTagTransform = tzTag("TRAN");     // the "transform", unchanged
constexpr TzTagId kTagSubPath = tzTag("SPAT");       // which piece of a split path
constexpr TzTagId kTagDrawingIndex = tzTag("ZORD");  // the place among its siblings

// Tags of the mesh item. On polygons, `VCMP` "1" goes with every `PRIM`.
constexpr TzTagId kTagViewBox = tzTag("VBOX");
constexpr TzTagId kTagViewBoxCompare = tzTag("VCMP");

}  // namespace tzsvg
