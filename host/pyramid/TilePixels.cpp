#include "host/pyramid/TilePixels.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <set>
#include <vector>

#include "host/ImageLoading.h"

namespace tzhost {
namespace {

// A picture of that size from the lines that `read(y, line)` gives.
template <class Read>
QImage pictureOf(TzSize size, Read&& read) {
    QImage picture(static_cast<int>(size.width), static_cast<int>(size.height), QImage::Format_RGBA8888);
    if (picture.isNull()) throw CTzError(kTzOutOfMemory);
    std::vector<float> line(size_t{size.width} * 4);
    for (uint32_t y = 0; y < size.height; ++y) {
        read(y, line.data());
        toBytes(line.data(), line.size(), picture.scanLine(static_cast<int>(y)));
    }
    return picture;
}

}  // namespace

QImage readPicture(const CTzUser_Image& image, TzSize part) {
    return pictureOf(
        part, [&](uint32_t y, float* line) { image.readLine(0, y, part.width, kTzPixelRgbaFloat, line); });
}

QImage readLevel(ITzImageLevelSample& samples, uint32_t level, TzSize size) {
    return pictureOf(size, [&](uint32_t y, float* line) {
        tzCheck(samples.sampleLine(level, 0, y, size.width, kTzPixelRgbaFloat, line));
    });
}

std::string pictureBytes(const QImage& picture, const std::string& format) {
    static const std::set<std::string> kOpaque = {"bmp", "jpg", "jpeg", "pbm", "pgm", "ppm", "xbm"};
    QImage written = picture;
    if (kOpaque.count(format) > 0) {
        written = QImage(picture.size(), QImage::Format_RGB32);
        if (written.isNull()) throw CTzError(kTzOutOfMemory);
        written.fill(Qt::white);
        QPainter(&written).drawImage(0, 0, picture);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!written.save(&buffer, format.c_str())) throw CTzError(kTzFailed);
    return bytes.toStdString();
}

std::vector<std::string> pictureFormats() {
    std::vector<std::string> formats = {"png"};
    for (const QByteArray& format : QImageWriter::supportedImageFormats()) {
        if (format != "png") formats.push_back(format.toStdString());
    }
    return formats;
}

}  // namespace tzhost
