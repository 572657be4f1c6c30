// Why a document that is read all right is refused as an image: what would make a renderer hang, crash or
// read what it must not, and too many dashes.
#pragma once

#include <QByteArray>
#include <QString>

#include "normalize/check/Finding.h"

namespace tznormalize {

// Adds the reason, if it is one of these. Links are followed from where the file of that name is, as the
// image does.
void addRefusedImage(CheckReport& report, const QByteArray& bytes, const QString& fileName);

}  // namespace tznormalize
