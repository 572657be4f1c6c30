// That no pixel tells that tiles are painted by an engine of ours, for all that Qt draws in a way of its own.
#include <gtest/gtest.h>

#include <QLoggingCategory>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>
#include <random>

#include "bench/exact/TileComparison.h"
#include "image/painting/TileCanvas.h"
#include "tests/image/ImageFixture.h"

struct TileEngineTest : ImageTest {
    // Compares tiles of all levels. Whether outlines were trimmed for any.
    bool isTrimmed(const QByteArray& content, uint64_t seed, const QByteArray& size = "100") {
        const char kGradients[] =
            "<linearGradient id='l' gradientTransform='rotate(30)'><stop stop-color='red'/>"
            "<stop offset='1' stop-color='blue' stop-opacity='.5'/></linearGradient>"
            "<linearGradient id='u' gradientUnits='userSpaceOnUse' x2='70' xlink:href='#l'/>"
            "<radialGradient id='r' fx='.3' xlink:href='#l'/>";
        write("<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='" +
              size + "' height='" + size + "'>" + kGradients + content + "</svg>");
        const auto compared =
            tzbench::compareTiles(path(), 16, 1.0, seed, tzsvg::CullingSettings{SIZE_MAX, 0, 60, 0, 0});
        EXPECT_EQ(compared.different, 0U) << content.constData();
        return compared.trimmed > 0;
    }

    void SetUp() override {
        if (!tzsvg::TileCanvas::isOurs()) GTEST_SKIP() << "outlines are not trimmed";
        QLoggingCategory::setFilterRules(QStringLiteral("qt.svg*=false"));
    }
};

// All that a path can be drawn with. It goes to and fro, so that many tiles see pieces of it.
TEST_F(TileEngineTest, paths) {
    std::mt19937 random(7);
    const auto number = [&] {
        return " " + QByteArray::number(static_cast<double>(random() % 11000) / 100 - 5);
    };
    QByteArray d = "M0,0";
    for (int i = 0; i < 60; ++i) {
        d += i % 3 == 0 ? " L" : i % 3 == 1 ? " C" : i % 7 == 0 ? " z M" : " Q";
        for (int n = d.endsWith('C') ? 6 : d.endsWith('Q') ? 4 : 2; n > 0; --n) d += number();
    }
    const char* const kStyles[] = {
        "fill='lime'",
        "fill='lime' fill-rule='evenodd' transform='rotate(33)'",
        "fill='url(#l)' opacity='.6'",
        "fill='url(#u)' transform='scale(-1,.7) translate(-100)'",
        "fill='url(#r)' stroke='url(#u)' stroke-width='.1'",
        "fill='none' stroke='red' stroke-width='.3'",
        "fill='none' stroke='#f008' stroke-linejoin='round' stroke-linecap='round' transform='skewX(20)'",
        "fill='none' stroke='red' stroke-width='.2' stroke-linejoin='bevel' stroke-linecap='square'",
        "fill='none' stroke='red' stroke-width='.1' stroke-dasharray='2,1'",
        "fill='none' stroke='red' stroke-width='.0005'",
        "fill='none' stroke='red' stroke-width='9' vector-effect='non-scaling-stroke'",
        "fill='red' stroke='blue' stroke-width='.1' comp-op='xor'",
    };
    uint64_t seed = 0;
    for (const char* style : kStyles)
        EXPECT_TRUE(isTrimmed("<circle r='50' fill='red'/><path d='" + d + "' " + style + "/>", ++seed))
            << style;
}

// Coordinates so large that QPainterPath takes the ends of a round join for the same point, and Qt does not.
TEST_F(TileEngineTest, strokesFarFromTheOrigin) {
    std::mt19937 random(9);
    QByteArray d;
    for (int i = 0; i < 200; ++i) {
        d += i == 0 ? "M" : " L";
        for (int n = 0; n < 2; ++n) d += QByteArray::number(1e10 + random() % 10000 / 100.0, 'f', 2) + ' ';
    }
    EXPECT_TRUE(
        isTrimmed("<circle r='90'/><path transform='translate(-10000000000,-10000000000)' fill='none' "
                  "stroke='red' stroke-width='.2' stroke-linejoin='round' d='" +
                      d + "'/>",
                  1));
}

// What Qt draws otherwise than most: what it takes for rectangles, for single lines, open, closed or too
// short.
TEST_F(TileEngineTest, shapesOfTheirOwn) {
    QByteArray rects;
    for (int i = 1; i < 90; ++i) {
        const QByteArray n = QByteArray::number(i);
        const QByteArray y = QByteArray::number(i * 37 % 90);
        rects += "<polygon points='" + n + ".1" + n + "," + y + ".3 " + n + ".6" + n + "7," + y + ".3 " + n +
                 ".6" + n + "7," + y + ".9" + n + " " + n + ".1" + n + "," + y + ".9" + n + "'/>";
    }
    QByteArray many = "<polygon points='";
    for (int i = 0; i < 66000; ++i) {
        const double turn = i * 0.0000952;
        many += QByteArray::number(50 + (40 + i % 3) * std::cos(turn)) + "," +
                QByteArray::number(50 + (40 + i % 5) * std::sin(turn)) + " ";
    }
    const struct {
        QByteArray content;
        bool isTrimmed;
    } cases[] = {
        {"<circle cx='50' cy='50' r='45'/><ellipse cx='40' cy='60' rx='70' ry='20' fill='red' stroke='#00f8' "
         "stroke-width='3' transform='rotate(20)'/>",
         true},
        {"<path d='M0 -10 a5 5 0 1 1 8 6 a5 5 0 1 1 -3 10 a5 5 0 1 1 -10 0 a5 5 0 1 1 -3 -10 a5 5 0 1 1 8 -6 "
         "z' stroke='red' stroke-width='.7' transform='translate(50,50) skewX(9) scale(-4,4)'/>",
         true},
        {"<polygon points='10,5 95,40 60,95 5,60 50,50 50,50' stroke='red' stroke-linejoin='round'/>", true},
        {"<path d='M0,0 L99,50 M5,5 L60,95 M9,80 L95,85 L90,20' stroke='red' stroke-linecap='square'/>",
         true},
        {"<path d='M0,0 L99,50 M5,5 L60,95 M9,80 L95,85' stroke='red' stroke-linecap='round'/>", true},
        // Dashes after a polyline that is open, and a path that is not near.
        {"<g fill='none' stroke='red' stroke-width='.4'><polyline points='5,90 40,10 80,85'/><path d='M0,0 "
         "h3 v3'/>"
         "<path d='M20,20 h70 v70 h-50 z' stroke-width='4' stroke-dasharray='300,3'/></g>",
         true},
        // The same, where the path between does not end that: single lines, an invisible one.
        {"<g fill='none' stroke='blue' stroke-width='3'><polyline points='2,2 4,2 4,4'/><path d='M97,97 "
         "L99,99'/><path d='M12,12 L24,14 L8,16 z' stroke-dasharray='4000,1'/></g>",
         true},
        {"<g fill='none' stroke='blue' stroke-width='3'><polyline points='2,2 4,2 4,4'/><path d='M60,98 "
         "L61,99 "
         "L40,99' stroke-opacity='0'/><path d='M97,97 L99,99 L80,99'/><path d='M12,12 L24,14 L8,16 z' "
         "stroke-dasharray='4000,1'/></g>",
         true},
        // The same, where Qt fits a gradient to the polyline.
        {"<g fill='none'><polyline points='-300,-60 160,-60 160,300' stroke='url(#l)' "
         "stroke-width='4'/><path "
         "d='M20,20H80V80Z' stroke='green' stroke-width='20' stroke-dasharray='999'/></g>",
         true},
        {"<path d='M-6000,20 L90,30 L50,6000 L3,3' stroke='red'/>", true},
        // With a gradient's pen, which Qt lays aside for the fill.
        {"<rect x='97' y='70.44281' width='3.31875815' height='1.97714051' stroke='url(#l)'/>", true},
        {rects, false},
        {"<rect x='96.9961929' y='70.4428101' width='3.31875815' height='1.97714051' stroke='url(#l)' "
         "stroke-width='0'/>",
         false},
        {"<text x='9' y='60' font-size='70'>Ag</text><circle cx='50' cy='50' r='45'/>", true},
        {many + "' fill-opacity='.5'/>", true},
    };
    uint64_t seed = 0;
    for (const auto& [content, expected] : cases) {
        EXPECT_EQ(isTrimmed(content, ++seed), expected) << content.constData();
    }
}

// Whatever the level, what lies far beside the picture is left out, and little is not looked at.
TEST_F(TileEngineTest, vastDrawings) {
    const struct {
        const char* content;
        bool isVast;
    } cases[] = {
        {"<polygon points='-400,-900 500,1000 30,700'/>", true},
        {"<path d='M5,5 L60,95 C900,80 95,85 90,20' fill='none' stroke='red' stroke-width='2'/>", true},
        {"<path d='M5,5 L60,95 C90,80 95,85 90,20' fill='none' stroke='red'/><path d='M5,50 H60' "
         "stroke='red'/>",
         false}};
    for (const auto& [content, isVast] : cases) {
        QSvgRenderer renderer("<svg xmlns='http://www.w3.org/2000/svg' width='100' height='100'>" +
                              QByteArray(content) + "</svg>");
        QImage expected(100, 100, QImage::Format_ARGB32);
        expected.fill(Qt::transparent);
        QImage pixels = expected;
        QPainter painter(&expected);
        renderer.render(&painter);
        tzsvg::TileCanvas canvas(pixels);
        QPainter ours(&canvas.device());
        renderer.render(&ours);
        EXPECT_EQ(canvas.hasTrimmed(), isVast) << content;
        EXPECT_EQ(pixels, expected) << content;
    }
}

// QPainter makes another path of these for any paint device but its own.
TEST_F(TileEngineTest, roundedRectangles) {
    std::mt19937 random(3);
    const auto upTo = [&](double most) {
        return QByteArray::number(static_cast<double>(random() % 10000) / 1e4 * most);
    };
    QByteArray rects;
    for (int i = 0; i < 60; ++i) {
        rects += "<rect x='" + upTo(256) + "' y='" + upTo(256) + "' width='" + upTo(3) + "1' height='" +
                 upTo(3) + "1' rx='" + upTo(5) + "1' ry='" + upTo(5) + "1' stroke='red' stroke-width='.4'/>";
    }
    for (uint64_t seed = 0; seed < 6; ++seed) static_cast<void>(isTrimmed(rects, seed, "256"));
}

// What a paint device of ours is not told, or told less than is painted: an area whose gradient has its focus
// outside of the circle, a stroke that goes far beyond its curve, which turns back, or dashes too small to be
// drawn, for which Qt makes such a stroke.
TEST_F(TileEngineTest, shapesThatCannotBeMeasured) {
    QByteArray spikes;
    for (int i = 0; i < 36; ++i) {
        spikes += "<path transform='translate(90,90) rotate(" + QByteArray::number(10 * i) +
                  ")' d='M6.1746,25.7595 C6.1746,25.7595 6.1703,25.7415 14.3766,59.9768 M-90-90h.001M110 "
                  "110h.001'/>";
    }
    const QByteArray drawings[] = {
        "<radialGradient id='g' cx='.27' r='.32' fx='.94' fy='.82'><stop stop-color='red'/><stop "
        "offset='1'/></radialGradient>"
        "<circle r='5'/><ellipse cx='80' cy='90' rx='70' ry='80' fill='url(#g)' transform='rotate(-25)'/>",
        "<circle r='5'/><g fill='none' stroke='red'>" + spikes + "</g>",
        "<circle r='5'/><g fill='none' stroke='red' stroke-dasharray='.0005'>" + spikes + "</g>",
    };
    for (const QByteArray& drawing : drawings) {
        write("<svg xmlns='http://www.w3.org/2000/svg' width='180' height='180'>" + drawing + "</svg>");
        const auto compared =
            tzbench::compareTiles(path(), 60, 2.0, 1, tzsvg::CullingSettings{1, 0, 60, 0, 0});
        EXPECT_EQ(compared.different, 0U) << drawing.constData();
    }
}

// However the caller's stack lies: some of the pixels that Qt's functions keep there are computed another
// way.
TEST_F(TileEngineTest, stacks) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer moves what is on the stack";
#endif
    QSvgRenderer renderer(
        QByteArray("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 1000000 1000000'>"
                   "<radialGradient id='g' spreadMethod='reflect' cx='.296' cy='1' r='.265'>"
                   "<stop stop-color='#d57ce8'/><stop offset='1' stop-color='#6fb64f'/></radialGradient>"
                   "<circle r='201981646' fill='url(#g)' opacity='.33'/><path fill='url(#g)' "
                   "d='M696576 943353L62552754877 960302L842731 937428L-65294790 993767'/></svg>"));
    renderer.setViewBox(QRectF(0, 500000, 500000, 500000));
    QImage expected(256, 256, QImage::Format_ARGB32);
    expected.fill(Qt::transparent);
    QPainter painter(&expected);
    renderer.render(&painter);
    for (size_t below = 0; below < 64; below += 16) {
        const auto paint = [&](QImage& pixels) {
            *static_cast<volatile char*>(__builtin_alloca(below + 1)) = 0;
            tzsvg::TileCanvas canvas(pixels);
            QPainter ours(&canvas.device());
            renderer.render(&ours);
        };
        QImage pixels(expected.size(), expected.format());
        pixels.fill(Qt::transparent);
        paint(pixels);
        EXPECT_EQ(pixels, expected) << below;
    }
}
