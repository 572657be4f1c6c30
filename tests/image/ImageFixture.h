// A document in a folder of its own, and the image loader that opens it, for tests of the loader and the
// image.
#pragma once

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "image/CSVGImageLoader.h"
#include "tests/image/ImageHost.h"

// Shapes across all tile seams, half transparent, over the edges of the document and with text.
inline QByteArray drawing(const QByteArray& root) {
    return "<svg xmlns='http://www.w3.org/2000/svg' " + root +
           "><rect x='-20' y='-20' width='90' height='50' fill='#ff8000' fill-opacity='0.5'/>"
           "<path d='M0 0 L300 200 M300 0 L0 200' stroke='blue' stroke-width='7'/>"
           "<circle cx='60' cy='30' r='45' fill='green' fill-opacity='0.3' stroke='black'/>"
           "<text x='5' y='40' font-size='30'>Abg</text>"
           "<rect x='80' y='20' width='400' height='400' fill='#123456' fill-opacity='0.7'/></svg>";
}

using ImageLoader = CTzPolymorph<tzsvg::CSVGImageLoader, ITzImageLoader>;

struct ImageTest : ::testing::Test {
    QString path() const { return folder.filePath(QStringLiteral("document.svg")); }

    // Old enough that a renderer of it is kept.
    void write(const QByteArray& bytes, int age = 60) const {
        QFile::remove(path());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.write(bytes);
        file.flush();
        file.setFileTime(QDateTime::currentDateTime().addSecs(-age), QFileDevice::FileModificationTime);
    }

    TzResult recognise() {
        name = path().toStdString();
        access = {};
        access.fileName = tzText(name);
        return loader->recognise(&access);
    }

    CTzPtr<ITzImage> load() {
        EXPECT_EQ(recognise(), kTzOk);
        ITzImage* out = nullptr;
        EXPECT_EQ(loader->load(&access, &out), kTzOk);
        return CTzPtr<ITzImage>::adopt(out);
    }

    ImageHost host;
    QTemporaryDir folder;
    CTzPtr<ITzImageLoader> loader = ImageLoader::create(host.object());
    std::string name;
    TzLoadAccess access{};
};

struct Pixel {
    float r, g, b, a;

    friend bool operator==(const Pixel& x, const Pixel& y) {
        return x.r == y.r && x.g == y.g && x.b == y.b && x.a == y.a;
    }
};

inline std::vector<Pixel> pixelsOf(ITzImage& image, TzSize size) {
    std::vector<Pixel> pixels(size_t{size.width} * size.height);
    for (uint32_t y = 0; y < size.height; ++y) {
        EXPECT_EQ(image.readLine(0, y, size.width, kTzPixelRgbaFloat, &pixels[size_t{y} * size.width]),
                  kTzOk);
    }
    return pixels;
}
