// Pictures in drawings: how they look normalized, and which of those beside a drawing are embedded.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "normalize/Normalize.h"
#include "tests/normalize/Likeness.h"
#include "tests/normalize/Pages.h"

namespace tznormalize {
namespace {

// Four by four pixels, no two rows alike.
QByteArray png() {
    QImage image(4, 4, QImage::Format_RGB32);
    for (int i = 0; i < 16; ++i)
        image.setPixel(i % 4, i / 4, qRgb(i % 4 * 80, i / 4 * 80, (i * 7) % 2 * 255));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

TEST(Images, look) {
    const QByteArray link = " xlink:href='data:image/png;base64," + png().toBase64() + "'/>";
    const QByteArray drawing = QByteArray(
                                   "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'><circle cx='5' "
                                   "cy='5' r='4' fill='red'/></svg>")
                                   .toBase64();
    const struct {
        const char* name;
        QByteArray content;
    } rows[] = {
        {"fitted", "<image x='10' y='20' width='80' height='40'" + link},
        {"turned, with opacity",
         "<image x='30' y='10' width='60' height='40' preserveAspectRatio='none' opacity='.6' "
         "transform='rotate(15)'" +
             link},
        {"of its own size", "<image transform='translate(10 10) scale(10)'" + link},
        {"clipped",
         "<clipPath id='c'><circle cx='50' cy='50' r='30'/></clipPath><g clip-path='url(#c)'><image "
         "width='90' "
         "height='60' preserveAspectRatio='xMidYMid slice'" +
             link + "</g>"},
        {"larger than the page",
         "<image x='-30' y='-20' width='200' height='150' preserveAspectRatio='none'" + link},
        {"in a pattern and a mask",
         "<pattern id='p' width='30' height='30' patternUnits='userSpaceOnUse'><image width='20' "
         "height='20'" +
             link +
             "</pattern><rect width='100' height='50' fill='url(#p)'/><mask id='m'><image y='50' width='90' "
             "height='40' "
             "preserveAspectRatio='none'" +
             link + "</mask><rect width='100' height='100' mask='url(#m)'/>"},
        {"a drawing", "<image x='10' y='20' width='80' height='40' xlink:href='data:image/svg+xml;base64," +
                          drawing + "'/>"},
    };
    for (const auto& row : rows) EXPECT_EQ(whatDiffersInPage(row.content).toStdString(), "") << row.name;
}

TEST(Images, onlyPicturesBesideTheDrawingAreEmbedded) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("drawing/below")));
    const auto write = [&](const char* name, const QByteArray& bytes) {
        QFile file(folder.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    write("drawing/a b.png", png());
    write("drawing/below/c.png", png());
    write("drawing/text.png", "no picture");
    write("outside.png", png());
    ASSERT_TRUE(QFile::link(folder.filePath(QStringLiteral("outside.png")),
                            folder.filePath(QStringLiteral("drawing/link.png"))));
    const QByteArray outside = folder.filePath(QStringLiteral("outside.png")).toUtf8();
    const struct {
        QByteArray link;
        bool isEmbedded;
    } rows[] = {{"a%20b.png", true},       {"below/c.png", true},  {"text.png", false},
                {"../outside.png", false}, {outside, false},       {"file://" + outside, false},
                {"link.png", false},       {"missing.png", false}, {"http://localhost/a.png", false}};
    for (const auto& row : rows) {
        const QByteArray image = "<image width='50' height='50' xlink:href='" + row.link + "'/>";
        const Normalized result = normalizedPage(image, folder.filePath(QStringLiteral("drawing/d.svg")));
        EXPECT_EQ(result.document.contains("data:image/png"), row.isEmbedded) << row.link.toStdString();
        EXPECT_EQ(notesWith(result, row.isEmbedded ? "fill pattern" : "the picture is no"), 1)
            << row.link.toStdString();
        // Without a file of its own a drawing has nothing beside it.
        EXPECT_FALSE(normalizedPage(image).document.contains("data:"));
    }
}

}  // namespace
}  // namespace tznormalize
