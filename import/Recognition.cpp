// See the header. Called by SVGLoader::recogniseFile().
#include "import/Recognition.h"

#include <QFile>
#include <QRegularExpression>
#include <algorithm>

#include "import/text/DocumentLimits.h"

#if QT_VERSION_MAJOR >= 6
#include <QStringDecoder>
#else
#include <QTextCodec>
#endif

namespace tzsvg {
namespace {

// More than any drawing, and less than the toolkit's strings hold. Also where an endless device stops.
constexpr qint64 kMaxFileBytes = qint64{1} << 30;

// Reads the whole file; false when it cannot be read or is too large.
bool readBytes(const QString& fileName, QByteArray& bytes) {
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

// The encoding that the XML declaration at the start of the bytes names; empty when there is none.
QByteArray declaredEncoding(const QByteArray& bytes) {
    if (!bytes.startsWith("<?xml")) return {};
    constexpr int kLongestDeclaration = 256;
    const QByteArray head = bytes.left(kLongestDeclaration);
    static const QRegularExpression pattern(
        QStringLiteral("^<\\?xml[^>]*?\\sencoding\\s*=\\s*[\"']([A-Za-z0-9._:-]+)[\"']"));
    return pattern.match(QString::fromLatin1(head)).captured(1).toLatin1();
}

QString decode(const QByteArray& bytes) {
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

}  // namespace

QString decodeJoined(const QByteArray& bytes) {
    QString text = decode(bytes);
    // Lines are joined with nothing between them: the text content of the document carries no line break of
    // the file, and a name or path data broken over two lines becomes one. Meant so, and every carriage
    // return goes with the line ends. Loader/joinsLines pins it.
    const auto isLineBreak = [](QChar c) { return c == u'\n' || c == u'\r'; };
    const auto end = std::remove_if(text.begin(), text.end(), isLineBreak);
    text.truncate(end - text.begin());
    return text;
}

bool readDocument(const QString& fileName, QDomDocument& document) {
    document.clear();
    QString text;
    {
        QByteArray bytes;
        if (!readBytes(fileName, bytes)) return false;
        text = decodeJoined(bytes);
    }
    if (!withinLimits(text) || !document.setContent(text, false) ||
        document.elementsByTagName(QStringLiteral("svg")).size() != 1) {
        document.clear();
        return false;
    }
    return true;
}

}  // namespace tzsvg
