// Recognition: from a file to the document that is loaded, or to "not an SVG file".
#pragma once

#include <QByteArray>
#include <QString>

#include "import/DocumentSurvey.h"
#include "svg/tree/XmlDocument.h"

namespace tzsvg {

// The text of a file: decoded by its byte order mark, else by the encoding its XML declaration names if the
// Qt knows it, else as UTF-8 (bytes that are not valid become replacement characters), all lines joined.
QString decodeJoined(const QByteArray& bytes);

// A recognised file.
struct SvgDocument {
    XmlDocument tree;
    qint64 textLength = 0;
    DocumentSurvey survey;  // of the tree

    void clear();
};

// Reads and parses a file. True when it is XML within the limits and holds exactly one element named "svg";
// otherwise the document is empty.
bool readDocument(const QString& fileName, SvgDocument& document);

}  // namespace tzsvg
