// The readers of lists: points, transforms, style properties; and the limits of documents.
#include <gtest/gtest.h>

#include <QStringList>

#include "svg/text/PointList.h"
#include "svg/text/StyleProperty.h"
#include "svg/text/TransformList.h"
#include "svg/tree/DocumentLimits.h"
#include "tests/common/Table.h"

namespace tzsvg {
namespace {

QPointF pointOf(const QString& text) {
    return {text.section(u',', 0, 0).toDouble(), text.section(u',', 1).toDouble()};
}

TEST(PointList, table) {
    for (const auto& row : readTable("text/points.txt", 2)) {
        QVector<QPointF> points = {{7, 7}};
        EXPECT_EQ(readPointList(QString::fromStdString(row[0]), points), row[1] != "refused") << row[0];
        QVector<QPointF> expected;
        if (row[1] != "refused") {
            const QStringList pairs = QString::fromStdString(row[1]).split(u' ', Qt::SkipEmptyParts);
            for (const QString& pair : pairs) expected.append(pointOf(pair));
        }
        EXPECT_EQ(points, expected) << row[0];
    }
}

TEST(TransformList, accepted) {
    for (const auto& row : readTable("text/transforms.txt", 3)) {
        SCOPED_TRACE(row[0]);
        QTransform transform(9, 9, 9, 9, 9, 9);
        ASSERT_TRUE(parseTransformList(QString::fromStdString(row[0]), transform));
        for (const int corner : {1, 0}) {
            const QPointF off =
                transform.map(QPointF(corner, corner)) - pointOf(QString::fromStdString(row[2 - corner]));
            EXPECT_LT(off.manhattanLength(), 1e-6);  // tangents are in single precision
        }
    }
    QTransform skew;
    ASSERT_TRUE(parseTransformList(QStringLiteral("skewX(30)"), skew));
    EXPECT_EQ(skew.m21(), static_cast<double>(static_cast<float>(skew.m21())))
        << "a tangent in single precision";
}

TEST(TransformList, refused) {
    const QString texts = QStringLiteral(
        "| |scale(2) |scale(2),|Scale(2)|scale(2|scale 2)|scale()|scale(2 3 4)|rotate(45 10)|"
        "rotate(1 2 3 4)|skewX(1 2)|scale(1e2)|scale(+2)|scale(2)x|translate|matrix(1 0 0 1 0)|"
        "matrix(1 0 0 1 0 0|skewX(1|scale(2) foo(1)|scale(-.5.5)|"
        "matrix(1 0 0 1 0 0 7)");  // surplusArgument: takes the 7 for the end
    for (const QString& text : texts.split(u'|')) {
        SCOPED_TRACE(text.toStdString());
        QTransform transform(9, 9, 9, 9, 9, 9);
        EXPECT_FALSE(parseTransformList(text, transform));
        EXPECT_TRUE(transform.isIdentity()) << "nothing of a partly parsed list is kept";
    }
    // Without optional numbers the character behind the last is consumed, whatever it is.
    QTransform transform;
    EXPECT_TRUE(parseTransformList(QStringLiteral("skewX(0;scale(2)"), transform));
    EXPECT_EQ(transform.m11(), 2);
}

TEST(StyleProperty, lookUp) {
    for (const auto& row : readTable("text/style-properties.txt", 3)) {
        QString value = QStringLiteral("old");
        EXPECT_TRUE(GetStyleProperty(QString::fromStdString(row[0]), QString::fromStdString(row[1]), value));
        EXPECT_EQ(value.toStdString(), row[2]) << row[0];
    }
    QString value = QStringLiteral("old");
    EXPECT_FALSE(GetStyleProperty({}, QStringLiteral("fill"), value));
    EXPECT_FALSE(GetStyleProperty(QStringLiteral("fill:red"), {}, value));
    EXPECT_EQ(value, QString());
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
    EXPECT_TRUE(withinLimits(QStringLiteral("<!DOCTYPE a [<!ENTITY x \"]>%1\">]><a/>").arg(open)));
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
