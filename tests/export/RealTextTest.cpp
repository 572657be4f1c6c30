// Coordinates as text: the fast printing against Qt's.
#include "export/CoordinateText.h"

#include <gtest/gtest.h>

#include <QString>
#include <QTextStream>
#include <cmath>
#include <random>
#include <vector>

namespace tzsvg {
namespace {

std::string streamed(double x, double y) {
    QString text;
    QTextStream stream(&text);
    stream << x << ',' << y << ' ';
    stream.flush();
    return text.toStdString();
}

std::string pairText(double x, double y) {
    CoordinateText text;
    text.appendPair(x, y);
    return std::string(text.view());
}

TEST(RealText, equalsQt) {
    std::vector<double> values = {
        0.0,       -0.0,           1.0,      10.5,     0.1,      1e-4,         1e-5,
        9.9999e-5, 0.000099999995, 99999.95, 999999.4, 999999.5, 999999.6,     1e5,
        1e6,       123456.5,       123457.5, 1234.125, 0.0625,   0.1234565,    5e-324,
        1.7e308,   3.4e38,         -1e-7,    100000.5, 9.999995, 9.9999949999, 0.00099999949999,
        2.0 / 3.0};
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    std::uniform_int_distribution<int> exponent(-7, 8);
    std::uniform_int_distribution<int> eighths(-8'000'000, 8'000'000);
    for (int i = 0; i < 50'000; ++i) {
        values.push_back(mantissa(random) * std::pow(10.0, exponent(random)));
        values.push_back(static_cast<double>(static_cast<float>(mantissa(random)) * 100.0F));
        values.push_back(eighths(random) / 8.0);  // exact ties among them
        values.push_back(eighths(random) / 1e4);  // close to ties
        const double power = std::pow(10.0, exponent(random));
        values.push_back(std::nextafter(power, 0.0));
        values.push_back(std::nextafter(power, 1e300));
    }
    for (const double value : values) {
        ASSERT_EQ(pairText(value, 7.0), streamed(value, 7.0))
            << QString::number(value, 'g', 17).toStdString();
        ASSERT_EQ(pairText(7.0, value), streamed(7.0, value))
            << QString::number(value, 'g', 17).toStdString();
    }
}

TEST(RealText, pathDataHasNoExponent) {
    struct Row {
        double value;
        const char* text;
    };
    for (const Row& row : std::vector<Row>{
             {1e6, "1000000"},
             {1234567.0, "1234570"},
             {-2.5e7, "-25000000"},
             {1e-5, "0.00001"},
             {-1.2345678e-7, "-0.000000123457"},
             {3.4e38, "340000000000000000000000000000000000000"},
             {999999.5, "1000000"},
             {10.25, "10.25"},
         }) {
        CoordinateText text;
        text.appendPlainPair(row.value, 0.0);
        text.append('M');
        text.appendPlainPair(0.5, row.value);
        EXPECT_EQ(text.view(), std::string(row.text) + ",0 M0.5," + row.text + " ");
    }
}

}  // namespace
}  // namespace tzsvg
