// References in property values: url(#id) with a fallback behind it.
#pragma once

#include <QStringView>

namespace tznormalize {

struct Reference {
    QStringView id;        // null when the text is no reference into the document
    QStringView fallback;  // what follows the reference, may be empty
    bool isUrl = false;    // whether it is any reference at all, to another document as well
};

// Quotes and blanks inside of the brackets do not count. Of "other.svg#id" the id is the part behind the "#".
Reference readReference(QStringView text);

}  // namespace tznormalize
