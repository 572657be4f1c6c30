// 8-bit channels as floats, against Qt's own.
#include "image/PixelConversion.h"

#include <gtest/gtest.h>

#include <QColor>

TEST(PixelConversion, equalsQColor) {
    for (int value = 0; value < 256; ++value) {
        const QRgb pixel = qRgba(value, 255 - value, value ^ 0x55, 255 - (value ^ 0x2A));
        QColor color;
        color.setRgb(qRed(pixel), qGreen(pixel), qBlue(pixel), qAlpha(pixel));
        float out[4] = {};
        tzsvg::toRgbaFloats(&pixel, 1, out);
        EXPECT_EQ(out[0], static_cast<float>(color.redF())) << value;
        EXPECT_EQ(out[1], static_cast<float>(color.greenF())) << value;
        EXPECT_EQ(out[2], static_cast<float>(color.blueF())) << value;
        EXPECT_EQ(out[3], static_cast<float>(color.alphaF())) << value;
    }
}
