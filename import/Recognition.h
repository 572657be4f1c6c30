// Recognition: from a file to the document that is loaded, or to "not an SVG file".
#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>

namespace tzsvg {

// The text of a file: decoded by its byte order mark, else by the encoding its XML declaration names if the
// toolkit knows it, else as UTF-8 (bytes that are not valid become replacement characters), all lines
// joined.
QString decodeJoined(const QByteArray& bytes);

// Reads and parses a file. True, with the document and the length of its text, when it is XML within the
// limits and holds exactly one element named "svg"; otherwise the document is empty.
bool readDocument(const QString& fileName, QDomDocument& document, qint64& length);

}  // namespace tzsvg
