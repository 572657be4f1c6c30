// The rules by which a link becomes a file are the renderer's: names are taken as they stand,
// with no percent decoding, and a name without an ending is tried with the endings of all image formats.
#include "svg/guard/LinkedFiles.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QRegularExpression>
#include <QUrl>
#include <algorithm>
#include <vector>

#include "svg/guard/StyleCost.h"

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

Danger LinkedFiles::inspectImage(const QString& href) {
    const QString link = href.trimmed();
    if (link.isEmpty()) return Danger::kNone;
    if (link.startsWith(QLatin1String("data"))) {
        // As renderers of all versions read it: what follows the last "base64,", or all that follows the
        // comma.
        std::vector<QByteArray> readings;
        const auto base64 = link.lastIndexOf(QLatin1String("base64,"));
        if (base64 >= 0) readings.push_back(QByteArray::fromBase64(link.mid(base64 + 7).toLatin1()));
        const auto comma = link.indexOf(QLatin1Char(','));
        readings.push_back(QByteArray::fromPercentEncoding(link.mid(comma + 1).toLatin1()));
        readings.push_back(QByteArray::fromBase64(readings.back()));
        for (const QByteArray& data : readings) {
            const Danger danger = inspectData(data);
            if (danger != Danger::kNone) return danger;
        }
    }
    if (link.size() > kMaxPath) return Danger::kNone;
    const bool inFolder = !folder_.isEmpty() && QUrl(link).isRelative();
    return inspectFile(inFolder ? QDir(folder_).absoluteFilePath(link) : link);
}

Danger LinkedFiles::inspectFile(const QString& path) {
    if (!isSafeToOpen(path)) return Danger::kPipe;
    if (!QFileInfo::exists(path)) {
        const auto formats = QImageReader::supportedImageFormats();
        const bool safe = std::all_of(formats.begin(), formats.end(), [&](const QByteArray& format) {
            return isSafeToOpen(path + QLatin1Char('.') + QString::fromLatin1(format));
        });
        if (!safe) return Danger::kPipe;
    }
    QImageReader reader(path);
    const Danger danger = inspectRaster(reader);
    if (danger == Danger::kNone) files_.append(reader.fileName());  // with the ending that it was found by
    return danger;
}

Danger LinkedFiles::inspectData(QByteArray data) {
    QBuffer buffer(&data);
    if (!buffer.open(QIODevice::ReadOnly)) return Danger::kFile;
    QImageReader reader(&buffer);
    return inspectRaster(reader);
}

Danger LinkedFiles::inspectRaster(QImageReader& reader) {
    const QByteArray format = reader.format();
    if (format.isEmpty()) return Danger::kNone;  // no image at all
    if (format.startsWith("svg")) return Danger::kLinkedSvg;
    const QSize size = reader.size();
    if (size.isValid()) rasterBytes_ += qint64{size.width()} * size.height() * 4;
    return rasterBytes_ <= kMaxRasterBytes ? Danger::kNone : Danger::kRasters;
}

Danger LinkedFiles::inspectStyleSheet(const QString& instruction, StyleCost& styles) {
    static const QRegularExpression link(QStringLiteral("href=[\"'](.+)[\"']"));
    const QString path = link.match(instruction).captured(1);
    if (path.isEmpty() || path.size() > kMaxPath) return Danger::kNone;
    if (!isSafeToOpen(path)) return Danger::kPipe;
    files_.append(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Danger::kNone;
    if (file.size() > kMaxStyleBytes) return Danger::kStyles;
    styles.addSheet(QString::fromUtf8(file.readAll()));
    return Danger::kNone;
}

}  // namespace tzsvg
