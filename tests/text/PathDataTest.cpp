// The path data reader and its arcs. Expectations are written as the elements of the painter path: M, L, C
// with the points that follow each letter.
#include <gtest/gtest.h>

#include <QStringList>
#include <cmath>

#include "svg/text/Arc.h"
#include "svg/text/PathData.h"
#include "tests/common/Table.h"

namespace tzsvg {
namespace {

// The elements of a path as text: "M0,0 L10,0 C1,1 2,2 3,3".
std::string elementsOf(const QPainterPath& path) {
    QString text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        if (i > 0) text += u' ';
        if (e.type == QPainterPath::MoveToElement) text += u'M';
        if (e.type == QPainterPath::LineToElement) text += u'L';
        if (e.type == QPainterPath::CurveToElement) text += u'C';
        text += QStringLiteral("%1,%2").arg(e.x, 0, 'g', 6).arg(e.y, 0, 'g', 6);
    }
    return text.toStdString();
}

TEST(PathData, accepted) {
    for (const auto& row : readTable("text/path-data.txt", 2)) {
        QPainterPath path;
        EXPECT_TRUE(parsePathData(QString::fromStdString(row[0]), path)) << row[0];
        EXPECT_EQ(elementsOf(path), row[1]) << row[0];
    }
}

TEST(PathData, refused) {
    const QString texts = QStringLiteral(
        "M0 0 L 1.2.3 4|M1-2-3.5.5|M0|M0 0 L|M0 0 C1 1 2 2 3|M+1 2|10 20|M0 0 z 5 5|M0 0 L1 1 x 5 5|"
        "M0 0 A5 5 0 2 0 1 1|M0 0 A5 5 0 0|M0 0 A5 5 0 0 1 1|M0 0 Z-1 2|"
        "M0 0 L1e2 3");  // the exponent's letter has no numbers of its own
    for (const QString& text : texts.split(u'|')) {
        SCOPED_TRACE(text.toStdString());
        QPainterPath path;
        path.lineTo(1, 1);
        EXPECT_FALSE(parsePathData(text, path));
        EXPECT_EQ(path.elementCount(), 0);
    }
    // Coordinates that Qt would drop never reach the path.
    const QString huge = QStringLiteral("9").repeated(128);
    for (const char* const form : {"M0 0 L10%1 0", "M%1 0 l%1 0", "M0 %1 v%1", "M%1 0 Q%1 %1 0 %1"}) {
        QPainterPath path;
        EXPECT_FALSE(parsePathData(QString::fromUtf8(form).arg(huge), path)) << form;
    }
}

TEST(PathData, flagsNeedNoSeparator) {
    QPainterPath joined;
    QPainterPath apart;
    ASSERT_TRUE(parsePathData(QStringLiteral("M0 0 a10 10 0 01 20 0"), joined));
    ASSERT_TRUE(parsePathData(QStringLiteral("M0 0 A10 10 0 0 1 20 0"), apart));
    EXPECT_EQ(elementsOf(joined), elementsOf(apart));
}

struct ArcCase {
    const char* name;
    QPointF start;
    Arc arc;
    int segments;
    QPointF centre;    // every segment's ends lie on the ellipse about it
    QPointF extremum;  // a point that the arc passes: tells which of the four arcs it is
    double scale;      // by which radii that are too small grow
};

void PrintTo(const ArcCase& row, std::ostream* out) {
    *out << row.name;
}

class Arcs : public testing::TestWithParam<ArcCase> {};

// Checked against the ellipse itself: the ends of all segments and their middles satisfy its equation, and
// the arc passes the side that the flags ask for. The approximation of a quarter by a cubic is good to 3e-4
// of the radius, angles are single precision.
// The end of a half circle that starts at half a turn: a whole turn is not quite one in single precision.
TEST(PathData, arcInSinglePrecision) {
    QPainterPath path;
    ASSERT_TRUE(parsePathData(QStringLiteral("M0 0A10 10 0 0 1 20 0"), path));
    EXPECT_DOUBLE_EQ(path.currentPosition().y(), 10 * double{std::sin(6.2831855F)});
}

TEST_P(Arcs, liesOnItsEllipse) {
    const ArcCase& c = GetParam();
    QPainterPath path(c.start);
    ASSERT_TRUE(appendArc(c.start, c.arc, path));
    ASSERT_EQ(path.elementCount(), 1 + 3 * c.segments);
    const QTransform toUnit =
        QTransform().scale(1 / (c.arc.rx * c.scale), 1 / (c.arc.ry * c.scale)).rotate(-c.arc.rotation);
    constexpr double kCubicError = 5e-4;
    double nearest = 1e9;
    for (int i = 0; i <= 64; ++i) {
        const QPointF point = path.pointAtPercent(i / 64.0);
        const QPointF unit = toUnit.map(point - c.centre);
        EXPECT_NEAR(std::hypot(unit.x(), unit.y()), 1.0, kCubicError) << i;
        nearest = std::min(nearest, std::hypot(point.x() - c.extremum.x(), point.y() - c.extremum.y()));
    }
    EXPECT_LT(nearest, 0.1 * std::abs(c.arc.rx) * c.scale);
    const QPointF end = path.currentPosition();
    EXPECT_NEAR(end.x(), c.arc.end.x(), 1e-4);
    EXPECT_NEAR(end.y(), c.arc.end.y(), 1e-4);
}

INSTANTIATE_TEST_SUITE_P(
    PathData, Arcs,
    testing::Values(
        ArcCase{"quarter", {10, 0}, {10, 10, 0, false, true, {0, 10}}, 1, {0, 0}, {7.071, 7.071}, 1},
        ArcCase{"half", {0, 0}, {10, 10, 0, false, true, {20, 0}}, 2, {10, 0}, {10, -10}, 1},
        ArcCase{"halfOtherWay", {0, 0}, {10, 10, 0, false, false, {20, 0}}, 2, {10, 0}, {10, 10}, 1},
        ArcCase{"large", {10, 0}, {10, 10, 0, true, false, {0, 10}}, 3, {0, 0}, {-10, 0}, 1},
        ArcCase{
            "smallOtherCentre", {10, 0}, {10, 10, 0, false, false, {0, 10}}, 1, {10, 10}, {2.929, 2.929}, 1},
        ArcCase{"ellipse", {20, 0}, {20, 5, 0, false, true, {0, 5}}, 1, {0, 0}, {14.142, 3.5355}, 1},
        ArcCase{"turned", {0, 20}, {20, 5, 90, false, true, {-5, 0}}, 1, {0, 0}, {-3.5355, 14.142}, 1},
        ArcCase{"radiiTooSmall", {0, 0}, {5, 5, 0, false, true, {20, 0}}, 2, {10, 0}, {10, -10}, 2},
        ArcCase{"negativeRadii", {10, 0}, {-10, -10, 0, false, true, {0, 10}}, 1, {0, 0}, {7.071, 7.071}, 1}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace tzsvg
