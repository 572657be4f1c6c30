#include "host/pyramid/TilePixels.h"

#include <QBuffer>
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
    picture.convertTo(QImage::Format_ARGB32);
    if (picture.isNull()) throw CTzError(kTzOutOfMemory);
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

std::string pngBytes(const QImage& picture) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!picture.save(&buffer, "PNG")) throw CTzError(kTzFailed);
    return png.toStdString();
}

}  // namespace tzhost
