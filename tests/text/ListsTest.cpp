// The readers of lists: points, transforms, style properties; and the limits of documents.
#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "svg/text/NumberReader.h"
#include "svg/text/PointList.h"
#include "svg/text/StyleProperty.h"
#include "svg/text/TransformList.h"
#include "svg/tree/DocumentLimits.h"

namespace tzsvg {
namespace {

TEST(PointList, table) {
    struct Row {
        const char* text;
        bool reads;
        QVector<QPointF> points;
    };
    const Row rows[] = {
        {"10,20 30,40", true, {{10, 20}, {30, 40}}},
        {"10,20", true, {{10, 20}}},
        {" \n1,2\t\r3e1,-4 ", true, {{1, 2}, {30, -4}}},
        {"", true, {}},
        {"   ", true, {}},
        {",5 6,", true, {{0, 5}, {6, 0}}},  // an empty piece is 0
        {"x,5 6px,7", true, {{0, 5}, {0, 7}}},
        {"10 20 30 40", false, {}},
        {"10, 20", false, {}},
        {"10,20,30 40,50", false, {}},
        {"1,2 3", false, {}},
        {"1,2 1e999,3", false, {}},
        {"nan,1", false, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        QVector<QPointF> points = {{7, 7}};
        EXPECT_EQ(readPointList(QString::fromUtf8(row.text), points), row.reads);
        EXPECT_EQ(points, row.points);
    }
}

// Each row maps (1, 1) and (0, 0).
TEST(TransformList, accepted) {
    struct Row {
        const char* text;
        QPointF one, zero;
    };
    const Row rows[] = {
        {"translate(10)", {11, 11}, {10, 10}},  // translateOne: both axes
        {"translate(10 5)", {11, 6}, {10, 5}},
        {"scale(2)", {2, 2}, {0, 0}},
        {"scale (2 3)", {2, 3}, {0, 0}},
        {"scale,(,2,)", {2, 2}, {0, 0}},  // a comma is white space, anywhere
        {"translate(10,20) scale(2)", {12, 22}, {10, 20}},
        {"translate(10,20)scale(2)", {12, 22}, {10, 20}},
        {" scale(2) translate(10,20)", {22, 42}, {20, 40}},
        {"rotate(90)", {-1, 1}, {0, 0}},
        {"rotate(90 1 0)", {0, 0}, {1, -1}},
        {"skewX(45)", {2, 1}, {0, 0}},
        {"skewY(45)", {1, 2}, {0, 0}},
        {"matrix(1 2 3 4 5 6)", {9, 12}, {5, 6}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        QTransform transform(9, 9, 9, 9, 9, 9);
        ASSERT_TRUE(parseTransformList(QString::fromUtf8(row.text), transform));
        const QPointF one = transform.map(QPointF(1, 1));
        const QPointF zero = transform.map(QPointF(0, 0));
        constexpr double kSinglePrecision = 1e-6;  // tangents are single
        EXPECT_NEAR(one.x(), row.one.x(), kSinglePrecision);
        EXPECT_NEAR(one.y(), row.one.y(), kSinglePrecision);
        EXPECT_NEAR(zero.x(), row.zero.x(), kSinglePrecision);
        EXPECT_NEAR(zero.y(), row.zero.y(), kSinglePrecision);
    }
    QTransform skew;
    ASSERT_TRUE(parseTransformList(QStringLiteral("skewX(30)"), skew));
    EXPECT_EQ(skew.m21(), static_cast<double>(static_cast<float>(skew.m21())))
        << "a tangent in single precision";
}

TEST(TransformList, refused) {
    const char* const texts[] = {
        "",
        " ",
        "scale(2) ",
        "scale(2),",
        "Scale(2)",
        "scale(2",
        "scale 2)",
        "scale()",
        "scale(2 3 4)",
        "rotate(45 10)",
        "rotate(1 2 3 4)",
        "skewX(1 2)",
        "scale(1e2)",
        "scale(+2)",
        "scale(2)x",
        "translate",
        "matrix(1 0 0 1 0)",
        "rotate(45deg)",
        "matrix(1 0 0 1 0 0 7)",  // surplusArgument: takes the 7 for the end
        "matrix(1 0 0 1 0 0",
        "skewX(1",
        "scale(2) foo(1)",
        "scale(-.5.5)",
    };
    for (const char* const text : texts) {
        SCOPED_TRACE(text);
        QTransform transform(9, 9, 9, 9, 9, 9);
        EXPECT_FALSE(parseTransformList(QString::fromUtf8(text), transform));
        EXPECT_TRUE(transform.isIdentity()) << "nothing of a partly parsed list is kept";
    }
    // Without optional numbers the character behind the last is consumed, whatever it is.
    QTransform transform;
    EXPECT_TRUE(parseTransformList(QStringLiteral("skewX(0;scale(2)"), transform));
    EXPECT_EQ(transform.m11(), 2);
}

TEST(StyleProperty, lookUp) {
    struct Row {
        const char* style;
        const char* property;
        const char* value;
    };
    const Row rows[] = {
        {"fill:red", "fill", "red"},
        {"fill:red", "fill:", "red"},
        {"Fill:red", "fill", "red"},
        {"a:b;fill:red;c:d", "fill", "red"},
        {"fill:  red  ;opacity:0.5", "fill", "red  "},  // leading blanks go, trailing stay
        {"fill:", "fill", ""},
        {"fill:;stroke:red", "fill", ""},
        {"stroke-width:2; stroke:blue", "stroke", ""},  // a blank behind the semicolon hides it
        {"stroke :red", "stroke", ""},
        {"stroke-width:2;stroke:blue", "stroke", "blue"},
        {"xfill:red", "fill", ""},
        {"xfill:red;fill:blue", "fill", "blue"},
        {"fill:red;fill:blue", "fill", "red"},
        {"fill-opacity:1", "fill", ""},
        {";fill:red", "fill", "red"},
        {"fill:url(#a);fill:b", "fill", "url(#a)"},
        {"fill", "fill", ""},
        {"fill:\xc2\xa0red", "fill", "red"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.style);
        QString value = QStringLiteral("old");
        EXPECT_TRUE(GetStyleProperty(QString::fromUtf8(row.style), QString::fromUtf8(row.property), value));
        EXPECT_EQ(value, QString::fromUtf8(row.value));
    }
    QString value = QStringLiteral("old");
    EXPECT_FALSE(GetStyleProperty({}, QStringLiteral("fill"), value));
    EXPECT_FALSE(GetStyleProperty(QStringLiteral("fill:red"), {}, value));
    EXPECT_EQ(value, QString());
}

TEST(ScanText, ignoresLocale) {
    // Where the machine has a locale with a decimal comma, reading must not follow it.
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* const name : {"de_DE.UTF-8", "fr_FR.UTF-8"}) std::setlocale(LC_NUMERIC, name);
    float a = 0;
    float b = 0;
    EXPECT_EQ(scanText("1.5 2.5", "%f %f", &a, &b), 2);
    EXPECT_EQ(a, 1.5F);
    std::setlocale(LC_NUMERIC, before.c_str());
}

QString nested(int levels, const QString& inside = {}) {
    return QStringLiteral("<g>").repeated(levels) + inside + QStringLiteral("</g>").repeated(levels);
}

TEST(DocumentLimits, depthAndAttributes) {
    EXPECT_TRUE(withinLimits(nested(256)));
    EXPECT_FALSE(withinLimits(nested(257)));
    EXPECT_TRUE(withinLimits(nested(255, QStringLiteral("<r/>").repeated(1000))))
        << "siblings are not levels";
    EXPECT_FALSE(withinLimits(QStringLiteral("<g>").repeated(257))) << "also when nothing is closed";
    // Markup in comments, data, processing instructions and values does not count.
    const QString open = QStringLiteral("<g>").repeated(300);
    EXPECT_TRUE(withinLimits(QStringLiteral("<a><!--%1--><![CDATA[%1]]><?p %1?></a>").arg(open)));
    EXPECT_TRUE(withinLimits(QStringLiteral("<a b='%1'><c d=\"/>\"/></a>").arg(nested(300))));
    EXPECT_FALSE(withinLimits(QStringLiteral("<!DOCTYPE a '>' [<!ENTITY x \"]>\">]>") + nested(257)));

    QString attributes;
    for (int i = 0; i < 4096; ++i) attributes += QStringLiteral(" a%1='>'").arg(i);
    EXPECT_TRUE(withinLimits(QStringLiteral("<g%1/>").arg(attributes)));
    EXPECT_FALSE(withinLimits(QStringLiteral("<g%1 b=\"\"/>").arg(attributes)));

    // What entities add counts.
    const QString entity = QStringLiteral("<!DOCTYPE g [<!ENTITY e \"%1\">]>").arg(nested(100));
    EXPECT_TRUE(withinLimits(entity + nested(100, QStringLiteral("&e;"))));
    EXPECT_FALSE(withinLimits(entity + nested(200, QStringLiteral("&e;"))));
}

// A short text that stands for a long one is refused before anything is built from it.
TEST(DocumentLimits, expansion) {
    const auto document = [](const char* subset, const QString& inside) {
        return QStringLiteral("<!DOCTYPE g [%1]><g>%2</g>").arg(QLatin1String(subset), inside);
    };
    const QString kilobyte = QString(1000, u'x');
    const QByteArray entity = "<!ENTITY e \"" + kilobyte.toLatin1() + "\">";
    const QByteArray defaults = "<!ATTLIST r a CDATA \"" + kilobyte.toLatin1() + "\">";
    const QString reference = QStringLiteral("&e;");
    struct Row {
        const char* name;
        const char* subset;
        QString inside;
        bool accepted;
    };
    const Row rows[] = {
        {"few references", entity, reference.repeated(900), true},
        {"many in a text", entity, reference.repeated(2000), false},
        {"many between elements", entity, (reference + QStringLiteral("<r/>")).repeated(2000), false},
        {"many in a value", entity, QStringLiteral("<r a='%1'/>").arg(reference.repeated(2000)), false},
        {"more than are expanded", "<!ENTITY e 'x'>", reference.repeated(4097), false},
        {"the same, not at once", "<!ENTITY e 'x'>",
         (reference.repeated(4096) + QStringLiteral("<r/>")).repeated(2), true},
        {"predefined", "<!ENTITY e 'x'>", QStringLiteral("&amp;&#65;&lt;&gt;&quot;&apos;").repeated(4097),
         true},
        {"data", "<!ENTITY e 'x'>", QStringLiteral("<![CDATA[%1]]>").arg(QString(9000, u'&')), true},
        {"no entities", "", QString(9000, u'x'), true},
        {"elements of entities", "<!ENTITY e '<r/><r/><r/><r/><r/><r/><r/><r/>'>", reference.repeated(4000),
         true},
        {"few defaults", defaults, QStringLiteral("<r/>").repeated(900), true},
        {"many defaults", defaults, QStringLiteral("<r/>").repeated(2000), false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(withinLimits(document(row.subset, row.inside)), row.accepted) << row.name;
    }
}

}  // namespace
}  // namespace tzsvg
