// The rules by which a link becomes a file are the renderer's: names are taken as they stand,
// with no percent decoding, and a name without an ending is tried with the endings of all image formats.
#include "image/LinkedFiles.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QRegularExpression>
#include <QUrl>
#include <algorithm>

#include "image/DocumentGuard.h"
#include "image/StyleCost.h"

namespace tzsvg {
namespace {

// Longer names open nothing; a data URI is one, too.
constexpr int kMaxPath = 4096;

// Opening a pipe or a device may wait for ever. What is not there or a folder opens as nothing.
bool isSafeToOpen(const QString& path) {
    const QFileInfo file(path);
    return !file.exists() || file.isFile() || file.isDir();
}

}  // namespace

LinkedFiles::LinkedFiles(const QString& documentName, bool compressed) {
    if (!compressed) folder_ = QFileInfo(documentName).absolutePath();
}

bool LinkedFiles::acceptImage(const QString& href) {
    const QString link = href.trimmed();
    if (link.isEmpty()) return true;
    if (link.startsWith(QLatin1String("data"))) {
        // As renderers of all versions read it: what follows the last "base64,", or all that follows the
        // comma.
        const auto base64 = link.lastIndexOf(QLatin1String("base64,"));
        if (base64 >= 0 && !acceptData(QByteArray::fromBase64(link.mid(base64 + 7).toLatin1()))) return false;
        const auto comma = link.indexOf(QLatin1Char(','));
        const QByteArray payload = QByteArray::fromPercentEncoding(link.mid(comma + 1).toLatin1());
        if (!acceptData(payload) || !acceptData(QByteArray::fromBase64(payload))) return false;
    }
    if (link.size() > kMaxPath) return true;
    const bool inFolder = !folder_.isEmpty() && QUrl(link).isRelative();
    return acceptFile(inFolder ? QDir(folder_).absoluteFilePath(link) : link);
}

bool LinkedFiles::acceptFile(const QString& path) {
    if (!isSafeToOpen(path)) return false;
    if (!QFileInfo::exists(path)) {
        const auto formats = QImageReader::supportedImageFormats();
        const bool safe = std::all_of(formats.begin(), formats.end(), [&](const QByteArray& format) {
            return isSafeToOpen(path + QLatin1Char('.') + QString::fromLatin1(format));
        });
        if (!safe) return false;
    }
    QImageReader reader(path);
    if (!acceptRaster(reader)) return false;
    files_.append(reader.fileName());  // with the ending that it was found by
    return true;
}

bool LinkedFiles::acceptData(QByteArray data) {
    QBuffer buffer(&data);
    if (!buffer.open(QIODevice::ReadOnly)) return false;
    QImageReader reader(&buffer);
    return acceptRaster(reader);
}

bool LinkedFiles::acceptRaster(QImageReader& reader) {
    const QByteArray format = reader.format();
    if (format.isEmpty()) return true;  // no image at all
    if (format.startsWith("svg")) return false;
    const QSize size = reader.size();
    if (size.isValid()) rasterBytes_ += qint64{size.width()} * size.height() * 4;
    return rasterBytes_ <= kMaxRasterBytes;
}

bool LinkedFiles::acceptStyleSheet(const QString& instruction, StyleCost& styles) {
    static const QRegularExpression link(QStringLiteral("href=[\"'](.+)[\"']"));
    const QString path = link.match(instruction).captured(1);
    if (path.isEmpty() || path.size() > kMaxPath) return true;
    if (!isSafeToOpen(path)) return false;
    files_.append(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return true;
    if (file.size() > kMaxStyleBytes) return false;
    styles.addSheet(QString::fromUtf8(file.readAll()));
    return true;
}

}  // namespace tzsvg
