// Look-up of one property in the text of a "style" attribute.
#pragma once

#include <QString>

namespace tzsvg {

// Finds a property's value in a style text: the text behind "property:", without leading white space, up to
// the next ";". The name must stand at the very start of the text or directly after a ";", in any letter
// case: one behind a blank, or with a blank before its colon, is not found. That rule is exact and meant so:
// the presentation attribute is used instead. StyleProperty/lookUp pins it. An empty value when the property
// is not there; false only for an empty style or property.
bool GetStyleProperty(const QString& style, const QString& property, QString& value);

}  // namespace tzsvg
