// The bytes of a drawing to its text: unpacked, decoded.
#pragma once

#include <QByteArray>
#include <QString>

#include "normalize/Refusal.h"

namespace tznormalize {

// Unpacks gzip data, known by its first bytes, and decodes what it holds: by a byte order mark, else by the
// encoding that the XML declaration names, any that the system's iconv knows, else as UTF-8. Bytes that are
// not valid become replacement characters.
Reason textOfBytes(const QByteArray& bytes, QString& text);

}  // namespace tznormalize
