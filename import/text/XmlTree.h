// The one place where text becomes a tree: documents of the loader, stored fragments of the saver.
#pragma once

#include <QDomDocument>
#include <QString>

namespace tzsvg {

// Parses the text without namespaces: names keep their prefixes, declarations are attributes. False, and the
// document is empty or what the parser left, when the text is beyond the limits or not well-formed.
bool parseXml(const QString& xml, QDomDocument& document);

}  // namespace tzsvg
