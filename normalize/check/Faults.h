// Why the import does not read the text of an attribute, or reads it otherwise than renderers do.
#pragma once

#include <QString>
#include <QStringView>

#include "normalize/check/Finding.h"

namespace tznormalize {

struct Fault {
    const FindingRule* rule = nullptr;
    QString text;
};

// The texts are those that the import reads, lines joined. `written` is the text as it stands in the drawing,
// line breaks as blanks; null when it is not known.
Fault faultOfTransform(QStringView text, QStringView written);
Fault faultOfPathData(QStringView text, QStringView written);
Fault faultOfPoints(QStringView text, QStringView written);

// The two numbers that stand on two lines and are read as one: "10 20" as it is written; empty when there are
// none.
QString joinedNumbers(QStringView text, QStringView written);

extern const FindingRule kJoinedNumbers;
extern const FindingRule kMissingValue;
extern const FindingRule kOtherValue;  // a value that is read otherwise than it is meant

}  // namespace tznormalize
