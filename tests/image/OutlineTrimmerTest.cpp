// Outlines without the pieces that a tile does not see: what is left of them. And how far strokes reach.
#include <gtest/gtest.h>

#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <cmath>
#include <random>

#include "image/StrokeReach.h"
#include "image/trimming/OutlineTrimmer.h"
#include "image/trimming/TrimmedPaint.h"

using tzsvg::OutlineTrimmer;

namespace {

QPainterPath pathOf(std::initializer_list<QPointF> points) {
    QPainterPath path(*points.begin());
    for (const QPointF* point = points.begin() + 1; point != points.end(); ++point)
        tzsvg::addLine(*point, path);
    return path;
}

bool hasCurves(const QPainterPath& path) {
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).isCurveTo()) return true;
    }
    return false;
}

const QSize kTile(256, 256);

OutlineTrimmer trimmer(double reach, const QTransform& toPixels = {}) {
    return {toPixels, kTile, reach};
}

}  // namespace

TEST(OutlineTrimmer, keepsWhatIsNear) {
    const QPainterPath near = pathOf({{-15, 100}, {100, 100}, {100, 300}, {-15, 100}, {-15, 100 + 1e-13}});
    EXPECT_EQ(trimmer(0.0).filled(near)->path, near);
    EXPECT_EQ(trimmer(5.0).stroked(near)->path, near);
    // With the pieces that are joined to it there, those of no length as well.
    const QPainterPath stroked = pathOf(
        {{0, 9000}, {0, 5000}, {50, 4000}, {100, 100}, {100, 100}, {400, -400}, {400, -500}, {0, -2000}});
    EXPECT_EQ(trimmer(50.0).stroked(stroked)->path,
              pathOf({{0, 9000}, {50, 4000}, {100, 100}, {100, 100}, {400, -400}, {0, -2000}}));
    const QPainterPath joined =
        pathOf({{-300, 900}, {-200, 800}, {-400, 100}, {-60, 100}, {900, 100}, {700, 9}, {800, 5}});
    EXPECT_EQ(trimmer(50.0).stroked(joined)->path,
              pathOf({{-300, 900}, {-300, 100}, {-400, 100}, {-60, 100}, {900, 100}, {900, 5}, {800, 5}}));
}

TEST(OutlineTrimmer, piecesOnOneSideBecomeALine) {
    // Left of the tile level lines and upright ones, above it a line.
    const QPainterPath area = pathOf({{100, 100},
                                      {-100, 100},
                                      {-300, 50},
                                      {-200, 200},
                                      {-500, 150},
                                      {-400, -90},
                                      {0, -70},
                                      {200, -80},
                                      {100, 100}});
    EXPECT_EQ(trimmer(0.0).filled(area)->path,
              pathOf({{100, 100}, {-100, 100}, {-100, -90}, {-400, -90}, {200, -80}, {100, 100}}));
    // The pixels' sides count, not the path's.
    QTransform turned;
    turned.rotate(90);
    const auto sideways = [&](const QPointF& point) { return turned.inverted().map(point); };
    const QPainterPath lying = pathOf({sideways({-100, 0}), sideways({-300, 200}), sideways({100, 200})});
    const QPainterPath trimmed = trimmer(0.0, turned).filled(lying)->path;
    ASSERT_EQ(trimmed.elementCount(), 5);
    EXPECT_EQ(turned.map(QPointF(trimmed.elementAt(1))), QPointF(-100, 200));
}

// Of a curve, its lines that are near; of a line that goes round a corner of the tile, that it does.
TEST(OutlineTrimmer, curvesAndLinesThatPass) {
    QPainterPath curved(QPointF(-9000, 100));
    curved.cubicTo(0, 0, 300, 200, 9000, 100);
    const QPainterPath lines = trimmer(0.0).filled(curved)->path;
    EXPECT_FALSE(hasCurves(lines));
    EXPECT_LT(lines.elementCount(), 12);
    EXPECT_NEAR(lines.elementAt(3).y, curved.pointAtPercent(0.5).y(), 9.0);
    EXPECT_EQ(trimmer(50.0).stroked(curved)->path, curved);

    const QPainterPath passing = pathOf({{-100, 200}, {100, 400}, {100, 100}, {-100, 200}});
    EXPECT_EQ(trimmer(0.0).filled(passing)->path,
              pathOf({{-100, 200}, {-100, 273}, {-17, 273}, {100, 400}, {100, 100}, {-100, 200}}));
}

// What goes round the tile, near or not, stays around it; what lies beside it goes.
TEST(OutlineTrimmer, areasStayAroundTheTile) {
    QPainterPath around;
    around.addEllipse(QPointF(128, 128), 5000, 9000);
    const auto trimmed = trimmer(0.0).filled(around);
    EXPECT_FALSE(trimmed->isNear);
    EXPECT_TRUE(trimmed->path.contains(QRectF(0, 0, 256, 256)));
    EXPECT_FALSE(hasCurves(trimmed->path));
    EXPECT_TRUE(trimmer(50.0).stroked(around)->path.isEmpty());
    EXPECT_TRUE(trimmer(0.0).filled(around.translated(5300, 0))->path.isEmpty());

    QPainterPath touching;
    touching.addEllipse(QPointF(5200, 128), 5000, 9000);
    EXPECT_TRUE(trimmer(0.0).filled(touching)->isNear);
    EXPECT_FALSE(trimmer(0.0).filled(touching.translated(100, 0))->isNear);
    EXPECT_TRUE(trimmer(60.0).stroked(touching.translated(100, 0))->isNear);
}

// However the outline is turned into pixels, be it so that rounding moves them.
TEST(OutlineTrimmer, areasGoRoundTheTileAsOftenAsBefore) {
    constexpr double kAlmostFlat = 1.0 + 1e-14;
    const QTransform transforms[] = {
        {1, 0, 0, 1, 0, 0}, {0.7, -3, 2, 0.5, 900, -70}, {300, 300, 300, 300 * kAlmostFlat, -150000, 0}};
    std::mt19937 random(11);
    for (const QTransform& toPixels : transforms) {
        const bool isAlmostFlat = toPixels.m11() == toPixels.m21();
        const auto point = [&] {
            const double size = std::pow(10.0, 1 + random() % 5);
            const auto pixels = [&] {
                return size * (static_cast<double>(random() % 2001) / 1000 - 1) + 128;
            };
            const double x = pixels();
            const double y = pixels();
            if (!isAlmostFlat) return toPixels.inverted().map(QPointF(x, y));
            const double far = (y - x - 150000) / 300 / (kAlmostFlat - 1.0);
            return QPointF((x + 150000) / 300 - far, far);
        };
        const auto isAround = [&](const QPainterPath& path) {
            QPolygonF pixels;
            for (int i = 0; i < path.elementCount(); ++i) pixels << toPixels.map(QPointF(path.elementAt(i)));
            return pixels.containsPoint(QPointF(127.3, 128.7), Qt::WindingFill);
        };
        for (int i = 0; i < 5000; ++i) {
            QPainterPath area(point());
            for (unsigned n = 2 + random() % 8; n > 0; --n) tzsvg::addLine(point(), area);
            const auto trimmed = trimmer(0.0, toPixels).filled(area);
            if (!trimmed) continue;
            EXPECT_EQ(isAround(trimmed->path), isAround(area)) << i;
        }
    }
}

// Lines through the tile are cut, where Qt paints the same as without; most of them can be.
TEST(OutlineTrimmer, longLinesAreCut) {
    if (!tzsvg::isTrimmingProven()) GTEST_SKIP() << "outlines are not trimmed";
    const auto painted = [](const QPainterPath& path) {
        QImage image(kTile, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(path, Qt::red);
        return image;
    };
    std::mt19937 random(13);
    const auto upTo = [&](double most) { return most * static_cast<double>(random() % 1000001) / 1e6; };
    constexpr int kAreas = 300;
    int uncut = 0;
    for (int i = 0; i < kAreas; ++i) {
        const QPointF middle(upTo(256), upTo(256));
        const QPointF along(upTo(20000) - 10000, i % 5 == 0 ? 3000 : 20000 + upTo(9000));
        const QPointF end = middle + along * upTo(1.0);
        const QPainterPath area = pathOf({middle - along, end, i % 2 == 0 ? middle : QPointF(300, -9000)});
        const QPainterPath trimmed = trimmer(0.0).filled(area)->path;
        EXPECT_EQ(painted(trimmed), painted(area)) << i;
        for (int n = 1; n < trimmed.elementCount(); ++n) {
            const QLineF line(trimmed.elementAt(n - 1), trimmed.elementAt(n));
            const bool isInRows = std::min(line.y1(), line.y2()) < 256 && std::max(line.y1(), line.y2()) > 0;
            if (isInRows && line.dx() != 0.0 && std::abs(line.dy()) > 3000) ++uncut;
        }
    }
    EXPECT_LT(uncut, kAreas / 10);
    const QPainterPath tall = pathOf({{-3e6, -4e6}, {3e6, 4e6}, {2e6, 4e6}});
    EXPECT_GT(trimmer(0.0).filled(tall)->path.elementAt(1).y, -2000.0);
    EXPECT_EQ(painted(trimmer(0.0).filled(tall)->path), painted(tall));
}

TEST(OutlineTrimmer, leavesAloneWhatCannotBeTold) {
    QTransform flat;
    flat.scale(1.0, 0.0);
    const QPainterPath far = pathOf({{-100, 100}, {-200, 300}, {-5e6, 300}, {-100, 600}});
    EXPECT_FALSE(trimmer(0.0).filled(far));
    EXPECT_FALSE(trimmer(1.0).stroked(far));
    EXPECT_FALSE(trimmer(0.0, flat).filled(pathOf({{0, 0}, {9, 9}, {0, 9}})));
    QPainterPath vast(QPointF(-4e6, -4e6));
    vast.cubicTo(-4e6, 4e6, 4e6, 4e6, 4e6, -4e6);
    EXPECT_TRUE(trimmer(1.0).stroked(vast)->isNear);
    EXPECT_FALSE(trimmer(1.0, QTransform().scale(0.1, 0.1)).stroked(vast)->isNear);
    // Lines that Qt strokes each alone; what is left of others is none of these.
    QPainterPath lines = pathOf({{-100, 100}, {-200, 300}});
    lines.addPath(pathOf({{0, 0}, {9, 9}}));
    EXPECT_FALSE(trimmer(1.0).stroked(lines));
    EXPECT_TRUE(trimmer(1.0).stroked(lines.translated(900, 0))->path.isEmpty());
    lines.addPath(pathOf({{900, 0}, {990, 9}, {900, 800}}));
    EXPECT_EQ(trimmer(1.0).stroked(lines)->path, pathOf({{0, 0}, {9, 9}}));
}

// Of curves at random, many of them narrow, and widths of all sizes.
TEST(StrokeReach, strokesThatAreToldLieWithin) {
    std::mt19937 random(5);
    const auto upTo = [&](double most) { return most * static_cast<double>(random() % 100001) / 1e5; };
    constexpr int kCurves = 20000;
    int told = 0;
    for (int i = 0; i < kCurves; ++i) {
        const double height = std::pow(10.0, upTo(5.0) - 3.0);
        const auto point = [&] { return QPointF(upTo(100), upTo(height)); };
        QPainterPath path(point());
        path.cubicTo(point(), point(), point());
        const QPen pen(Qt::black, std::pow(10.0, upTo(5.0) - 2.0), Qt::SolidLine, Qt::FlatCap);
        if (!tzsvg::strokeIsTold(path)) continue;
        ++told;
        const double reach = tzsvg::strokeRadius(pen, false);
        EXPECT_TRUE(path.boundingRect()
                        .adjusted(-reach, -reach, reach, reach)
                        .contains(QPainterPathStroker(pen).createStroke(path).boundingRect()))
            << i;
    }
    EXPECT_GT(told, kCurves / 5);
    EXPECT_LT(told, kCurves);
    QPainterPath arch(QPointF(0, 0));
    arch.cubicTo(0, 100, 100, 100, 100, 0);
    EXPECT_TRUE(tzsvg::strokeIsTold(arch));
}
