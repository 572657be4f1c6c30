#include "normalize/style/Style.h"

namespace tznormalize {

Style::Style() {
    for (size_t i = 0; i < kStyleCount; ++i) values_[i] = initialValue(Property(i));
}

void Style::set(Property property, QStringView value) {
    values_[size_t(property)] = value;
    if (property == Property::kColor) {
        if (const auto color = readColor(value, color_)) color_ = *color;
    }
}

}  // namespace tznormalize
