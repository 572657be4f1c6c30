// The readers of single numbers: text to double, the number scanner, lengths.
#include <gtest/gtest.h>

#include <QStringList>
#include <clocale>
#include <cmath>
#include <cstdlib>

#include "svg/text/Length.h"
#include "svg/text/NumberReader.h"
#include "tests/common/Table.h"
#include "tests/common/TestFolder.h"

namespace tzsvg {
namespace {

// The fast way must answer as Qt does, number or not.
TEST(NumberText, equalsQt) {
    const char* const largest =
        "1797693134862315807937289714053034150799341327100378269361737789804449682927647509466490179775872070"
        "9633028641669288791094655554785194040263065748867150582068190890200070838367627385484581771153176447"
        "5730270069855571366959622842914819860834936475292719074168444365510704342711559699508093042880";
    const QString texts =
        QStringLiteral(
            "0|-0|5.|.5|-.5|-|.|-.||+5|1e2|1e|1e+2|1E-2|0x10|inf|-inf|nan|infinity|1e999|-1e999|1e-400|"
            "1,000| 5|5 |1.2.3|--5|5-|0.1|123456789012345678901234567890|4.9e-324|00012|1_000|"
            "0.30000000000000004|2.2250738585072011e-308|") +
        QLatin1String(largest);
    for (const QString& string : texts.split(u'|')) {
        SCOPED_TRACE(string.toStdString());
        bool expectedOk = false;
        const double expected = string.toDouble(&expectedOk);
        bool ok = !expectedOk;
        const double value = toDouble(string, ok);
        EXPECT_EQ(ok, expectedOk);
        if (std::isnan(expected)) {
            EXPECT_TRUE(std::isnan(value));
        } else {
            EXPECT_EQ(value, expected);
        }
    }
    bool ok = true;
    toDouble(QString(QChar(0x0665)), ok);  // an Arabic digit is a digit, but no number
    EXPECT_FALSE(ok);
}

TEST(NumberScanner, table) {
    for (const auto& row : readTable("text/numbers.txt", 3)) {
        SCOPED_TRACE(row[0]);
        qsizetype position = 0;
        double value = 99;
        EXPECT_EQ(scanNumber(QString::fromStdString(row[0]), position, value), row[1] != "none");
        EXPECT_EQ(value, row[1] == "none" ? 0 : std::stod(row[1]));
        EXPECT_EQ(position, std::stoi(row[2]));
    }
    qsizetype position = 0;
    double value = 99;
    EXPECT_FALSE(scanNumber(QString(400, u'9'), position, value)) << "overflows";
    EXPECT_EQ(value, 0.0);
}

TEST(Length, units) {
    const LengthContext context;
    const QString table = QStringLiteral(
        "10=10|10px=10|10em=10|10ex=10|2in=0.0508|72pt=0.025400000016|3pc=0.01269999999|5cm=0.05|"
        " 5mm =0.005|1e2=100|1e2px=100|-4=-4|+4=4|.5=0.5|-.5in=-0.0127|5 px=5|"
        // What cannot be read is 0.
        "=0|  =0|1.=0|1.5E=0|3 furlongs=0|10PX=0|px=0|%=0|x5=0|inf=0|1 2=0|5mm;=0");
    for (const QString& row : table.split(u'|')) {
        const QStringList sides = row.split(u'=');
        EXPECT_DOUBLE_EQ(parseLength(sides[0], Axis::kHorizontal, context), sides[1].toDouble())
            << row.toStdString();
    }
    EXPECT_TRUE(std::isinf(parseLength(QStringLiteral("1e999"), Axis::kVertical, context)));
    EXPECT_TRUE(std::isinf(parseLength(QStringLiteral("infpx"), Axis::kVertical, context)));
    EXPECT_EQ(convertUnit(u"5", static_cast<Unit>(9), Axis::kVertical, context), 0.0);
}

TEST(Length, percent) {
    LengthContext context;
    const auto percent = [&](Axis axis) { return parseLength(QStringLiteral("50%"), axis, context); };
    EXPECT_DOUBLE_EQ(percent(Axis::kHorizontal), 0.5) << "of a document of 1 x 1 at first";
    context.setPercentReferences(400, 200);
    EXPECT_DOUBLE_EQ(percent(Axis::kHorizontal), 200);
    EXPECT_DOUBLE_EQ(percent(Axis::kVertical), 100);
    for (const char* const bad : {"", "1 2 3", "0,0,8,8", "a b c d"}) {
        context.setPercentReferencesFromViewBox(QString::fromUtf8(bad));
        EXPECT_DOUBLE_EQ(percent(Axis::kVertical), 100) << bad;
    }
    context.setPercentReferencesFromViewBox(QStringLiteral(" 1 2 30.5 1e1 tail"));
    EXPECT_DOUBLE_EQ(percent(Axis::kHorizontal), 15.25);
    EXPECT_DOUBLE_EQ(percent(Axis::kVertical), 5);
    context.setPercentReferencesFromViewBox(QStringLiteral("0 0 0.1 1"));
    EXPECT_DOUBLE_EQ(percent(Axis::kHorizontal), static_cast<double>(0.1F) * 0.01 * 50) << "single precision";
}

// In a host whose locale has a decimal comma. Test machines have no such locale: one is made.
TEST(ScanText, ignoresTheLocale) {
    const TestFolder folder;
    const auto source = folder.write("comma.txt",
                                     "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\ngrouping -1\n"
                                     "END LC_NUMERIC\n");
    const std::string made = (folder / "comma").native();
    static_cast<void>(std::system(
        ("localedef -c --quiet --no-archive -i " + source.native() + " " + made + " 2>/dev/null").c_str()));
    setenv("LOCPATH", (folder / "").c_str(), 1);
    ASSERT_STREQ(std::setlocale(LC_NUMERIC, "comma"), "comma");
    float a = 0;
    float b = 0;
    EXPECT_EQ(std::strtof("1.5", nullptr), 1.0F) << "the locale has a decimal point";
    EXPECT_EQ(scanText("1.5 2.5", "%f %f", &a, &b), 2);
    EXPECT_EQ(a, 1.5F);
    EXPECT_EQ(std::strtof("1.5", nullptr), 1.0F) << "the host's locale is back";
    EXPECT_EQ(parseLength(QStringLiteral("1.5"), Axis::kHorizontal, {}), 1.5);
    std::setlocale(LC_NUMERIC, "C");
    unsetenv("LOCPATH");
}

}  // namespace
}  // namespace tzsvg
