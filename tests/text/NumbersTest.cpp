// The readers of single numbers: text to double, the number scanner, lengths.
#include <gtest/gtest.h>

#include <cmath>

#include "svg/text/Length.h"
#include "svg/text/NumberReader.h"

namespace tzsvg {
namespace {

// The fast way must answer as the toolkit does, number or not.
TEST(NumberText, equalsToolkit) {
    const char* const largest =
        "1797693134862315807937289714053034150799341327100378269361737789804449682927647509466490179775872070"
        "9633028641669288791094655554785194040263065748867150582068190890200070838367627385484581771153176447"
        "5730270069855571366959622842914819860834936475292719074168444365510704342711559699508093042880";
    const char* const texts[] = {
        "0",
        "-0",
        "5.",
        ".5",
        "-.5",
        "-",
        ".",
        "-.",
        "",
        "+5",
        "1e2",
        "1e",
        "1e+2",
        "1E-2",
        "0x10",
        "inf",
        "-inf",
        "nan",
        "infinity",
        "1e999",
        "-1e999",
        "1e-400",
        "1,000",
        " 5",
        "5 ",
        "1.2.3",
        "--5",
        "5-",
        "0.1",
        "123456789012345678901234567890",
        "4.9e-324",
        "1e308",
        "00012",
        "1_000",
        "0.30000000000000004",
        "2.2250738585072011e-308",
        largest,
    };
    for (const char* const text : texts) {
        SCOPED_TRACE(text);
        const QString string = QString::fromUtf8(text);
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
    struct Row {
        const char* text;
        bool scans;
        double value;
        int position;
    };
    const Row rows[] = {
        {"12", true, 12, 2},
        {"  -12.5,3", true, -12.5, 7},
        {"1e2", true, 1, 1},  // an exponent is never part of a number
        {"1E2", true, 1, 1},
        {"5.", true, 5, 2},
        {".5-3", true, 0.5, 2},
        {"\t\n 7 8", true, 7, 4},
        {"0-1", true, 0, 1},
        // A failure leaves the position behind the blanks.
        {" +3", false, 0, 1},
        {"1.2.3", false, 0, 0},
        {"0.5.5", false, 0, 0},  // secondPoint: not split in two
        {"  -", false, 0, 2},
        {".", false, 0, 0},
        {"--1", false, 0, 0},
        {"", false, 0, 0},
        {"   ", false, 0, 3},
        {"x", false, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const QString text = QString::fromUtf8(row.text);
        qsizetype position = 0;
        double value = 99;
        EXPECT_EQ(scanNumber(text, position, value), row.scans);
        EXPECT_EQ(value, row.value);
        EXPECT_EQ(position, row.position);
    }
    qsizetype position = 0;
    double value = 99;
    EXPECT_FALSE(scanNumber(QString(400, u'9'), position, value)) << "overflows";
    EXPECT_EQ(value, 0.0);
}

TEST(Length, units) {
    struct Row {
        const char* text;
        double value;
    };
    const Row rows[] = {
        {"10", 10},
        {"10px", 10},
        {"10em", 10},
        {"10ex", 10},
        {"2in", 0.0508},
        {"72pt", 0.025400000016},
        {"3pc", 0.01269999999},
        {"5cm", 0.05},
        {" 5mm ", 0.005},
        {"1e2", 100},
        {"1e2px", 100},
        {"-4", -4},
        {"+4", 4},
        {".5", 0.5},
        {"-.5in", -0.0127},
        {"5 px", 5},
        // What cannot be read is 0.
        {"", 0},
        {"  ", 0},
        {"1.", 0},
        {"1.5E", 0},
        {"3 furlongs", 0},
        {"10PX", 0},
        {"px", 0},
        {"%", 0},
        {"x5", 0},
        {"inf", 0},
        {"1 2", 0},
        {"5mm;", 0},
    };
    const LengthContext context;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_DOUBLE_EQ(parseLength(QString::fromUtf8(row.text), Axis::kHorizontal, context), row.value);
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

}  // namespace
}  // namespace tzsvg
