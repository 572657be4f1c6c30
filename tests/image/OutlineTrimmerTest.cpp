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
#include "image/painting/OutlineTrimmer.h"
#include "image/painting/TileCanvas.h"

using tzsvg::Outline;
using tzsvg::OutlineTrimmer;

namespace tzsvg {
static bool operator==(const Outline& a, const Outline& b) {
    const auto isSame = [](const QPointF& p, const QPointF& q) { return p.x() == q.x() && p.y() == q.y(); };
    return a.types == b.types &&
           std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(), isSame);
}
}  // namespace tzsvg

namespace {

Outline linesOf(std::initializer_list<QPointF> points) {
    Outline lines;
    lines.moveTo(*points.begin());
    for (const QPointF* point = points.begin() + 1; point != points.end(); ++point) lines.lineTo(*point);
    return lines;
}

Outline outlineOf(const QPainterPath& path) {
    Outline outline;
    for (int i = 0; i < path.elementCount(); ++i) {
        outline.points.push_back(path.elementAt(i));
        outline.types.push_back(path.elementAt(i).type);
    }
    return outline;
}

// Of lines.
QPainterPath pathOf(const Outline& outline) {
    QPainterPath path;
    for (size_t i = 0; i < outline.points.size(); ++i) {
        EXPECT_LE(outline.types[i], QPainterPath::LineToElement);
        if (outline.types[i] == QPainterPath::MoveToElement) path.moveTo(outline.points[i]);
        if (outline.types[i] == QPainterPath::LineToElement) path.lineTo(outline.points[i]);
    }
    return path;
}

const QSize kTile(256, 256);

OutlineTrimmer trimmer(double reach, const QTransform& toPixels = {}) {
    return {toPixels, kTile, reach};
}

std::optional<Outline> filled(const Outline& outline, const QTransform& toPixels = {}) {
    return trimmer(0.0, toPixels)
        .filled(
            {outline.points.data(), outline.types.data(), static_cast<int>(outline.points.size()), false});
}

std::optional<Outline> stroked(double reach, const Outline& outline, const QTransform& toPixels = {}) {
    return trimmer(reach, toPixels)
        .stroked(
            {outline.points.data(), outline.types.data(), static_cast<int>(outline.points.size()), false});
}

}  // namespace

TEST(OutlineTrimmer, keepsWhatIsNear) {
    const Outline near = linesOf({{-15, 100}, {100, 100}, {100, 300}, {-15, 100}, {-15, 100 + 1e-13}});
    EXPECT_EQ(filled(near), near);
    EXPECT_EQ(stroked(5.0, near), near);
    // With the pieces that are joined to it there, those of no length as well.
    const Outline along = linesOf(
        {{0, 9000}, {0, 5000}, {50, 4000}, {100, 100}, {100, 100}, {400, -400}, {400, -500}, {0, -2000}});
    EXPECT_EQ(stroked(50.0, along),
              linesOf({{0, 9000}, {50, 4000}, {100, 100}, {100, 100}, {400, -400}, {0, -2000}}));
    const Outline joined =
        linesOf({{-300, 900}, {-200, 800}, {-400, 100}, {-60, 100}, {900, 100}, {700, 9}, {800, 5}});
    EXPECT_EQ(stroked(50.0, joined),
              linesOf({{-300, 900}, {-300, 100}, {-400, 100}, {-60, 100}, {900, 100}, {900, 5}, {800, 5}}));
}

TEST(OutlineTrimmer, piecesOnOneSideBecomeALine) {
    // Left of the tile level lines and upright ones, above it a line.
    const Outline area = linesOf({{100, 100},
                                  {-100, 100},
                                  {-300, 50},
                                  {-200, 200},
                                  {-500, 150},
                                  {-400, -90},
                                  {0, -70},
                                  {200, -80},
                                  {100, 100}});
    EXPECT_EQ(filled(area),
              linesOf({{100, 100}, {-100, 100}, {-100, -90}, {-400, -90}, {200, -80}, {100, 100}}));
    // The pixels' sides count, not the path's.
    QTransform turned;
    turned.rotate(90);
    const auto sideways = [&](const QPointF& point) { return turned.inverted().map(point); };
    const Outline lying = linesOf({sideways({-100, 0}), sideways({-300, 200}), sideways({100, 200})});
    const auto trimmed = filled(lying, turned);
    ASSERT_EQ(trimmed->points.size(), 5U);
    EXPECT_EQ(turned.map(trimmed->points[1]), QPointF(-100, 200));
}

// Of a curve, its lines that are near; of a line that goes round a corner of the tile, that it does.
TEST(OutlineTrimmer, curvesAndLinesThatPass) {
    QPainterPath curved(QPointF(-9000, 100));
    curved.cubicTo(0, 0, 300, 200, 9000, 100);
    const QPainterPath lines = pathOf(*filled(outlineOf(curved)));
    EXPECT_LT(lines.elementCount(), 12);
    EXPECT_NEAR(lines.elementAt(3).y, curved.pointAtPercent(0.5).y(), 9.0);
    EXPECT_EQ(stroked(50.0, outlineOf(curved)), outlineOf(curved));

    const Outline passing = linesOf({{-100, 200}, {100, 400}, {100, 100}, {-100, 200}});
    EXPECT_EQ(filled(passing),
              linesOf({{-100, 200}, {-100, 273}, {-17, 273}, {100, 400}, {100, 100}, {-100, 200}}));
}

// What goes round the tile, near or not, stays around it; what lies beside it goes.
TEST(OutlineTrimmer, areasStayAroundTheTile) {
    QPainterPath around;
    around.addEllipse(QPointF(128, 128), 5000, 9000);
    const QPainterPath trimmed = pathOf(*filled(outlineOf(around)));
    EXPECT_LT(trimmed.elementCount(), 12);
    EXPECT_TRUE(trimmed.contains(QRectF(0, 0, 256, 256)));
    EXPECT_TRUE(stroked(50.0, outlineOf(around))->isEmpty());
    EXPECT_TRUE(filled(outlineOf(around.translated(5300, 0)))->isEmpty());

    QPainterPath touching;
    touching.addEllipse(QPointF(5200, 128), 5000, 9000);
    EXPECT_FALSE(stroked(1.0, outlineOf(touching))->isEmpty());
    EXPECT_TRUE(stroked(1.0, outlineOf(touching.translated(100, 0)))->isEmpty());
    EXPECT_FALSE(stroked(60.0, outlineOf(touching.translated(100, 0)))->isEmpty());
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
        const auto isAround = [&](const Outline& outline) {
            QPolygonF pixels;
            for (const QPointF& at : outline.points) pixels << toPixels.map(at);
            return pixels.containsPoint(QPointF(127.3, 128.7), Qt::WindingFill);
        };
        for (int i = 0; i < 5000; ++i) {
            Outline area = linesOf({point()});
            for (unsigned n = 2 + random() % 8; n > 0; --n) area.lineTo(point());
            const auto trimmed = filled(area, toPixels);
            if (!trimmed) continue;
            EXPECT_EQ(isAround(*trimmed), isAround(area)) << i;
        }
    }
}

// Lines through the tile are cut, where Qt paints the same as without; most of them can be.
TEST(OutlineTrimmer, longLinesAreCut) {
    if (!tzsvg::TileCanvas::isOurs()) GTEST_SKIP() << "outlines are not trimmed";
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
        const Outline area = linesOf({middle - along, end, i % 2 == 0 ? middle : QPointF(300, -9000)});
        const QPainterPath trimmed = pathOf(*filled(area));
        EXPECT_EQ(painted(trimmed), painted(pathOf(area))) << i;
        for (int n = 1; n < trimmed.elementCount(); ++n) {
            const QLineF line(trimmed.elementAt(n - 1), trimmed.elementAt(n));
            const bool isInRows = std::min(line.y1(), line.y2()) < 256 && std::max(line.y1(), line.y2()) > 0;
            if (isInRows && line.dx() != 0.0 && std::abs(line.dy()) > 3000) ++uncut;
        }
    }
    EXPECT_LT(uncut, kAreas / 10);
    const Outline tall = linesOf({{-3e6, -4e6}, {3e6, 4e6}, {2e6, 4e6}});
    EXPECT_GT(filled(tall)->points[1].y(), -2000.0);
    EXPECT_EQ(painted(pathOf(*filled(tall))), painted(pathOf(tall)));
}

TEST(OutlineTrimmer, leavesAloneWhatCannotBeTold) {
    QTransform flat;
    flat.scale(1.0, 0.0);
    const Outline far = linesOf({{-100, 100}, {-200, 300}, {-5e6, 300}, {-100, 600}});
    EXPECT_FALSE(filled(far));
    EXPECT_FALSE(stroked(1.0, far));
    EXPECT_FALSE(filled(linesOf({{0, 0}, {9, 9}, {0, 9}}), flat));
    QPainterPath vast(QPointF(-4e6, -4e6));
    vast.cubicTo(-4e6, 4e6, 4e6, 4e6, 4e6, -4e6);
    EXPECT_EQ(stroked(1.0, outlineOf(vast)), outlineOf(vast));
    EXPECT_TRUE(stroked(1.0, outlineOf(vast), QTransform().scale(0.1, 0.1))->isEmpty());
}

// As many sub-paths as are near; Qt closes polygons by a line of their own.
TEST(OutlineTrimmer, subPaths) {
    QPainterPath lines;
    for (const QPointF start : {QPointF(-100, 100), QPointF(10, 10), QPointF(900, 0)}) {
        lines.moveTo(start);
        lines.lineTo(start + QPointF(9, 9));
        lines.lineTo(start + QPointF(0, 40));
    }
    EXPECT_EQ(stroked(1.0, outlineOf(lines)), linesOf({{10, 10}, {19, 19}, {10, 50}}));
    const QPointF polygon[] = {{-100, 100}, {-100, -100}, {100, -200}, {400, 100}};
    EXPECT_TRUE(trimmer(1.0).stroked({polygon, nullptr, 4, false})->isEmpty());
    const auto closed = trimmer(1.0).stroked({polygon, nullptr, 4, true});
    ASSERT_FALSE(closed->isEmpty());
    EXPECT_EQ(closed->points.back(), polygon[0]);
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
