// Colours of attributes and style sheets.
#pragma once

#include <QStringView>
#include <cstdint>
#include <optional>
#include <string>

namespace tznormalize {

struct Color {
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    double opacity = 1;
};

// A colour in any form that drawings use: #rgb, #rgba, #rrggbb, #rrggbbaa, rgb() and rgba() with commas or
// blanks, numbers or percentages, hsl() and hsla(), a name, "transparent", "currentColor"; a colour before an
// icc-color() counts alone.
std::optional<Color> readColor(QStringView text, const Color& current);

// "#rrggbb", without the opacity.
std::string colorText(const Color& color);

}  // namespace tznormalize
