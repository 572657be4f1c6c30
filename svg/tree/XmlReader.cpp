#include "svg/tree/XmlReader.h"

#include "svg/tree/DocumentLimits.h"

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

XmlReader::XmlReader(const QString& xml) : text_(readable(xml)), stream_(text_) {
    stream_.setNamespaceProcessing(false);
}

bool XmlReader::withinLimits() const {
    return tzsvg::withinLimits(text_);
}

}  // namespace tzsvg
