// Parsing of stored document parts. Called by the steps that put them back.
#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QString>

namespace tzsvg {

// A parsed text: its one "svg" element, null when there is none, and the document that the element needs as
// long as it is not moved to another.
struct ParsedSvg {
    QDomDocument document;
    QDomElement svg;
};

// Parses an XML text that must hold exactly one "svg" element, at any place. The element is null when it does
// not, or passes the limits of svg/tree/DocumentLimits.h.
ParsedSvg parseSvg(const QString& xml);

// Parses a fragment, a sequence of nodes without a common root: they are the children of the element. Null as
// above.
ParsedSvg parseFragment(const QString& fragment);

// Moves all children of an element to the end of another's, which may belong to another document.
void moveChildren(const QDomElement& from, QDomElement to);

}  // namespace tzsvg
