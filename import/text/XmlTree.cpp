// See the header.
#include "import/text/XmlTree.h"

#include <QXmlStreamReader>

#include "import/text/DocumentLimits.h"

#if QT_VERSION_MAJOR < 6
#include <QRegularExpression>
#endif

namespace tzsvg {
namespace {

#if QT_VERSION_MAJOR < 6
// The text is decoded, so what encoding its declaration names is of no importance; Qt 5's reader refuses one
// that it does not know.
QString readable(QString xml) {
    static const QRegularExpression declared(
        QStringLiteral("^(<\\?xml[^>]*?\\sencoding\\s*=\\s*)(?:\"[^\">]*\"|'[^'>]*')"));
    return xml.replace(declared, QStringLiteral("\\1\"UTF-8\""));
}
#else
const QString& readable(const QString& xml) {
    return xml;
}
#endif

}  // namespace

bool parseXml(const QString& xml, QDomDocument& document) {
    if (!withinLimits(xml)) return false;
    // The reader is given, not left to the tree: Qt 5 would take an older one, which reads character
    // references beyond U+FFFF wrongly and differs on what is well-formed.
    QXmlStreamReader reader(readable(xml));
    reader.setNamespaceProcessing(false);
    return document.setContent(&reader, false);
}

}  // namespace tzsvg
