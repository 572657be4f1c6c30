// Why a file is no document for the import.
#pragma once

#include <QByteArray>
#include <QString>

#include "normalize/check/Finding.h"

namespace tznormalize {

class CheckedDocument;

// Adds the reason for which a document is not read. `joined` is its text without line breaks, as the import
// reads it.
void addUnreadable(CheckReport& report, const QByteArray& bytes, const QString& text, const QString& joined);

// Adds the reason for which a file was refused as an image, if it is one of these: an image reads it with its
// line breaks, and compressed ones, too.
void addUnreadableImage(CheckReport& report, const QByteArray& bytes);

// Adds the reason for which a document that was read is not taken: it has exactly one "svg" element.
// False when there is a reason.
bool checkRoots(const CheckedDocument& document, CheckReport& report);

}  // namespace tznormalize
