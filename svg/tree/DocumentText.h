// Reading a file, and decoding its bytes. Used wherever a document from outside is read.
#pragma once

#include <QByteArray>
#include <QString>

namespace tzsvg {

// Reads the whole file; false when it cannot be read or is larger than any drawing (1 GiB).
bool readFileBytes(const QString& fileName, QByteArray& bytes);

// Decodes the bytes of an XML document by their byte order mark, else by the encoding that the XML
// declaration names if Qt knows it, else as UTF-8. Bytes that are not valid become replacement characters.
QString decodeDocument(const QByteArray& bytes);

}  // namespace tzsvg
