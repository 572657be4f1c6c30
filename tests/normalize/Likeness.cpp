#include "tests/normalize/Likeness.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>

#include "normalize/Normalize.h"

namespace tznormalize {
namespace {

constexpr int kSize = 200;
constexpr int kTolerance = 32;             // of 255: anti-aliasing differs by that much
constexpr double kMostDiffering = 0.05;    // of the pixels that are drawn on
constexpr int kMostDifferingPixels = 200;  // of all, 0.5 %
constexpr int kTimeout = 60'000;           // milliseconds

// Runs a program; its standard output, or nothing with what it said in `error`.
QByteArray run(const QString& program, const QStringList& arguments, const QByteArray& input,
               QString& error) {
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(kTimeout) || process.exitCode() != 0) {
        error = program + QStringLiteral(": ") + QString::fromUtf8(process.readAllStandardError()) +
                process.errorString();
        return {};
    }
    return process.readAllStandardOutput();
}

QImage picture(const QByteArray& drawing, QString& error) {
    const QString size = QString::number(kSize);
    const QByteArray png = run(QStringLiteral("rsvg-convert"),
                               {QStringLiteral("-w"), size, QStringLiteral("-h"), size,
                                QStringLiteral("--accept-language"), QStringLiteral("en")},
                               drawing, error);
    return QImage::fromData(png, "PNG").convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// Whether a channel of a pixel lies beyond all that the other picture has around it, in any channel.
bool isBeyond(QRgb pixel, const QImage& other, int x, int y) {
    for (int shift = 0; shift < 32; shift += 8) {
        int least = 255;
        int most = 0;
        for (int v = std::max(y - 1, 0); v <= std::min(y + 1, other.height() - 1); ++v) {
            for (int u = std::max(x - 1, 0); u <= std::min(x + 1, other.width() - 1); ++u) {
                const int value = static_cast<int>(other.pixel(u, v) >> shift & 0xff);
                least = std::min(least, value);
                most = std::max(most, value);
            }
        }
        const int value = static_cast<int>(pixel >> shift & 0xff);
        if (value < least - kTolerance || value > most + kTolerance) return true;
    }
    return false;
}

QString compare(const QImage& one, const QImage& other) {
    if (one.size() != other.size()) return QStringLiteral("not the same size");
    int wrong = 0;
    int drawn = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            drawn += qAlpha(a) != 0 || qAlpha(b) != 0;
            wrong += a != b && (isBeyond(a, other, x, y) || isBeyond(b, one, x, y));
        }
    }
    if (wrong <= kMostDifferingPixels && wrong <= kMostDiffering * std::max(drawn, 100)) return {};
    return QStringLiteral("%1 of %2 pixels drawn differ").arg(wrong).arg(drawn);
}

// Import and export by the module.
QByteArray roundTrip(const QByteArray& drawing, QString& error) {
    const QTemporaryDir folder;
    const QString in = folder.filePath(QStringLiteral("in.svg"));
    const QString out = folder.filePath(QStringLiteral("out.svg"));
    QFile file(in);
    if (!file.open(QIODevice::WriteOnly)) error = QStringLiteral("no file");
    file.write(drawing);
    file.close();
    run(QStringLiteral(TZHOST_PROGRAM), {QStringLiteral("roundtrip"), in, out}, {}, error);
    QFile result(out);
    if (!result.open(QIODevice::ReadOnly)) return {};
    return result.readAll();
}

// `drawing` with the view box of `other`: the export writes one of its own, around all that is drawn.
QByteArray withViewBoxOf(const QByteArray& other, const QByteArray& drawing) {
    static const QRegularExpression viewBox(QStringLiteral("(?<=\\s)viewBox=\"[^\"]*\""));
    static const QRegularExpression size(QStringLiteral("<svg\\b[^>]*>"));
    static const QRegularExpression extent(QStringLiteral("\\s(viewBox|width|height|x|y)=\"[^\"]*\""));
    const QString box = viewBox.match(QString::fromUtf8(other)).captured();
    QString text = QString::fromUtf8(drawing);
    const QRegularExpressionMatch root = size.match(text);
    QString tag = root.captured();
    tag.remove(extent).chop(1);
    return text
        .replace(root.capturedStart(), root.capturedLength(),
                 tag + QStringLiteral(" width=\"100\" height=\"100\" preserveAspectRatio=\"none\" ") + box +
                     QStringLiteral(">"))
        .toUtf8();
}

}  // namespace

QString whatDiffers(const QByteArray& drawing) {
    const Normalized normalized = normalize(drawing, QString());
    if (normalized.refused) return QStringLiteral("refused: ") + normalized.refused.text;
    QString error;
    const QImage before = picture(drawing, error);
    const QImage after = picture(withViewBoxOf(normalized.document, normalized.document), error);
    if (!error.isEmpty()) return error;
    const auto failed = [&](const char* step, const QString& what) {
        return QString::fromLatin1(step) + what + QStringLiteral("\n") +
               QString::fromUtf8(normalized.document);
    };
    if (const QString why = compare(before, after); !why.isEmpty()) return failed("normalized: ", why);

    const QByteArray returned = roundTrip(normalized.document, error);
    if (!error.isEmpty()) return failed("round trip: ", error);
    const QImage again = picture(withViewBoxOf(normalized.document, returned), error);
    if (const QString why = compare(before, again); !why.isEmpty()) return failed("round trip: ", why);

    const QByteArray image = normalize(drawing, QString(), WrittenFor::kImage).document;
    const QImage shown = picture(withViewBoxOf(image, image), error);
    if (const QString why = compare(before, shown); !why.isEmpty())
        return failed("for an image: ", why + QStringLiteral("\n") + QString::fromUtf8(image));

    const struct {
        const QByteArray& once;
        WrittenFor writtenFor;
    } texts[] = {{normalized.document, WrittenFor::kRoundTrip}, {image, WrittenFor::kImage}};
    for (const auto& [once, writtenFor] : texts) {
        const QByteArray twice = normalize(once, QString(), writtenFor).document;
        if (twice != once)
            return failed("twice: ", QStringLiteral("another text\n") + QString::fromUtf8(twice));
    }
    return {};
}

QString whatDiffersInPage(const QByteArray& content) {
    return whatDiffers(
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
        "width=\"100\" height=\"100\" viewBox=\"0 0 100 100\">" +
        content + "</svg>");
}

void expectAlike(const std::vector<AlikeRow>& rows) {
    for (const AlikeRow& row : rows) EXPECT_EQ(whatDiffersInPage(row.content).toStdString(), "") << row.name;
}

void expectDefinedAlike(const std::vector<DefinedRow>& rows) {
    for (const DefinedRow& row : rows) {
        const QByteArray content = QByteArray("<defs>") + row.definition + "</defs>" + row.content;
        EXPECT_EQ(whatDiffersInPage(content).toStdString(), "") << row.name;
    }
}

}  // namespace tznormalize
