// The names by which a drawing is kept in a scene: the package, its channels and the tags. Written by the
// import, read back by the export.
#pragma once

#include "hostsdk/TzTypes.h"
#include "svg/tree/KnownNames.h"

namespace tzsvg {

constexpr char kPackageName[] = "svgloader.package";

// The package's channels, in order.
constexpr char kChannelDefinitions[] = "svgdefs";
constexpr char kChannelClipPaths[] = "clipdefs";
constexpr char kChannelGroups[] = "groupdefs";
constexpr char kChannelDoctype[] = "svgdoctype";
constexpr char kChannelRoot[] = "svgrootdef";
constexpr char kChannelIllustrator[] = "svgillustratorcdata";

// Tags of polygons that keep an attribute of the shape. These have a name of their own because they are
// written or read in a way of their own; all are in the table below.
constexpr TzTagId kTagFill = tzTag("FILL");
constexpr TzTagId kTagStroke = tzTag("LCOL");
constexpr TzTagId kTagStrokeWidth = tzTag("LWID");
constexpr TzTagId kTagStrokeOpacity = tzTag("LALF");
constexpr TzTagId kTagElementId = tzTag("ELID");
constexpr TzTagId kTagTransform = tzTag("TRAN");

// How the import comes by an attribute's text: fill and stroke properties from "style" first and the
// attribute where that gives nothing; the others from the attribute alone.
enum class TagGroup { kFill, kStroke, kIdentity };

// Which tag keeps which attribute. The import writes each group in this order; the export goes through all in
// ascending order of the IDs.
struct AttributeTag {
    TzTagId tag;
    Attribute attribute;
    TagGroup group;
};
constexpr AttributeTag kAttributeTags[] = {
    {kTagFill, Attribute::kFill, TagGroup::kFill},
    {tzTag("FILO"), Attribute::kFillOpacity, TagGroup::kFill},
    {tzTag("FILR"), Attribute::kFillRule, TagGroup::kFill},
    {tzTag("OPAC"), Attribute::kOpacity, TagGroup::kFill},
    {kTagStrokeWidth, Attribute::kStrokeWidth, TagGroup::kStroke},
    {kTagStroke, Attribute::kStroke, TagGroup::kStroke},
    {kTagStrokeOpacity, Attribute::kStrokeOpacity, TagGroup::kStroke},
    {tzTag("DARR"), Attribute::kDashArray, TagGroup::kStroke},
    {tzTag("DOFF"), Attribute::kDashOffset, TagGroup::kStroke},
    {tzTag("LCAP"), Attribute::kLineCap, TagGroup::kStroke},
    {tzTag("LJON"), Attribute::kLineJoin, TagGroup::kStroke},
    {tzTag("MLIM"), Attribute::kMiterLimit, TagGroup::kStroke},
    {tzTag("CPAT"), Attribute::kClipPath, TagGroup::kStroke},
    {kTagElementId, Attribute::kId, TagGroup::kIdentity},
    {kTagTransform, Attribute::kTransform, TagGroup::kIdentity},
};

// The other tags of polygons.
constexpr TzTagId kTagStyle = tzTag("STYL");         // the whole "style", for other readers; never exported
constexpr TzTagId kTagPrimitive = tzTag("PRIM");     // the element kind, for some with its numbers
constexpr TzTagId kTagParentGroup = tzTag("PGRP");   // the number of the enclosing group
constexpr TzTagId kTagGroupName = tzTag("VGRP");     // its "id"
constexpr TzTagId kTagGroupChain = tzTag("GSVG");    // the ids of all enclosing groups, outermost first
constexpr TzTagId kTagPick = tzTag("PICK");          // the same text
constexpr TzTagId kTagSubPath = tzTag("SPAT");       // which piece of a split path
constexpr TzTagId kTagDrawingIndex = tzTag("ZORD");  // the place among its siblings

// Tags of the mesh item. On polygons, `VCMP` "1" goes with every `PRIM`.
constexpr TzTagId kTagViewBox = tzTag("VBOX");
constexpr TzTagId kTagViewBoxCompare = tzTag("VCMP");

}  // namespace tzsvg
