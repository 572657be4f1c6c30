// Declarations, "fill: red; stroke: blue !important": the text of a style attribute, or between the braces of
// a rule.
#pragma once

#include <QStringView>
#include <vector>

#include "normalize/style/Property.h"

namespace tznormalize {

struct Declaration {
    Property property;
    QStringView value;  // without the blanks around it, not empty
    bool isImportant = false;
};

// Appends what the text, which has no comments, declares: only properties of the table, `font` and `marker`
// taken apart. Values that cannot be read are left out, so that what was declared before them holds. The
// views lead into the text.
void readDeclarations(QStringView text, std::vector<Declaration>& declarations);

// Whether the value is one that the property can have, as far as drawings get it wrong: paints, colours,
// opacities.
bool isValidValue(Property property, QStringView value);

}  // namespace tznormalize
