#include "normalize/content/EmbeddedPicture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "normalize/convert/Conversion.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

std::string withoutBlanks(QStringView text) {
    std::string out;
    out.reserve(size_t(text.size()));
    for (const QChar c : text) {
        if (!isBlank(c.unicode())) out += c.unicode() < 0x80 ? char(c.unicode()) : '?';
    }
    return out;
}

// By its first bytes; null for what is none of the three that every renderer draws.
const char* mediaType(const QByteArray& bytes) {
    if (bytes.startsWith("\x89PNG\r\n\x1a\n")) return "image/png";
    if (bytes.startsWith("\xff\xd8\xff")) return "image/jpeg";
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a")) return "image/gif";
    return nullptr;
}

// The file that a link leads to, if it lies in the drawing's folder or below, links of the file system
// followed.
QString fileBeside(const QString& drawing, QStringView link) {
    if (drawing.isEmpty()) return {};
    const QUrl folder = QUrl::fromLocalFile(QFileInfo(drawing).absolutePath() + u'/');
    const QUrl url = folder.resolved(QUrl(link.toString()));
    if (!url.isLocalFile()) return {};
    const QString inside = QFileInfo(drawing).absoluteDir().canonicalPath() + u'/';
    const QString file = QFileInfo(url.toLocalFile()).canonicalFilePath();
    return file.startsWith(inside) && QFileInfo(file).isFile() ? file : QString();
}

// What cannot be carried is said in `reason`.
std::string readFile(const QString& drawing, QStringView link, const char*& reason) {
    const QString name = fileBeside(drawing, link);
    QFile file(name);
    if (name.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        reason = "the picture is not in the drawing's folder";
        return {};
    }
    const QByteArray bytes = file.read(qint64(kLargestPicture));
    const char* const type = mediaType(bytes);
    if (!type) {
        reason = "the picture is no PNG, JPEG or GIF";
        return {};
    }
    if (!file.atEnd()) {
        reason = "the picture is too large";
        return {};
    }
    return "data:" + std::string(type) + ";base64," + bytes.toBase64().toStdString();
}

}  // namespace

std::string pictureData(Conversion& conversion, const SourceElement& element, QStringView link) {
    const char* reason = nullptr;
    std::string data = link.startsWith(u"data:", Qt::CaseInsensitive)
                           ? withoutBlanks(link)
                           : readFile(conversion.fileName, link, reason);
    if (!reason && data.size() > kLargestPicture) reason = "the picture is too large";
    if (!reason && conversion.pictureBytes + data.size() > kMostPictureBytes)
        reason = "the drawing has too many pictures";
    if (reason) {
        addNote(conversion, NoteCode::kLeftOut, element, QString::fromLatin1(reason), "href");
        return {};
    }
    conversion.pictureBytes += data.size();
    return data;
}

}  // namespace tznormalize
