#include "svg/tree/DocumentText.h"

#include <QFile>
#include <QRegularExpression>

#if QT_VERSION_MAJOR >= 6
#include <QStringDecoder>
#else
#include <QTextCodec>
#endif

namespace tzsvg {
namespace {

// More than any drawing, and less than Qt's strings hold. Also where an endless device stops.
constexpr qint64 kMaxFileBytes = qint64{1} << 30;

// The encoding that the XML declaration at the start of the bytes names; empty when there is none.
QByteArray declaredEncoding(const QByteArray& bytes) {
    if (!bytes.startsWith("<?xml")) return {};
    constexpr int kLongestDeclaration = 256;
    const QByteArray head = bytes.left(kLongestDeclaration);
    static const QRegularExpression pattern(
        QStringLiteral("^<\\?xml[^>]*?\\sencoding\\s*=\\s*[\"']([A-Za-z0-9._:-]+)[\"']"));
    return pattern.match(QString::fromLatin1(head)).captured(1).toLatin1();
}

}  // namespace

bool readFileBytes(const QString& fileName, QByteArray& bytes) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxFileBytes) return false;
    if (!file.isSequential()) {
        bytes = file.readAll();
    } else {
        while (bytes.size() <= kMaxFileBytes) {
            const QByteArray chunk = file.read(qint64{1} << 20);
            if (chunk.isEmpty()) break;
            bytes += chunk;
        }
    }
    return file.error() == QFileDevice::NoError && bytes.size() <= kMaxFileBytes;
}

QString decodeDocument(const QByteArray& bytes) {
#if QT_VERSION_MAJOR >= 6
    if (const auto marked = QStringConverter::encodingForData(bytes)) return QStringDecoder(*marked)(bytes);
    const QByteArray declared = declaredEncoding(bytes);
    if (!declared.isEmpty()) {
        QStringDecoder decoder(declared.constData());
        if (decoder.isValid()) return decoder(bytes);
    }
#else
    if (QTextCodec* const marked = QTextCodec::codecForUtfText(bytes, nullptr))
        return marked->toUnicode(bytes);
    const QByteArray declared = declaredEncoding(bytes);
    if (!declared.isEmpty()) {
        if (QTextCodec* const named = QTextCodec::codecForName(declared)) return named->toUnicode(bytes);
    }
#endif
    return QString::fromUtf8(bytes);
}

}  // namespace tzsvg
