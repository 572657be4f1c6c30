// The values of CSS properties that hold for one element, as text: what is declared for it over what it
// inherits.
#pragma once

#include <QStringView>
#include <array>

#include "normalize/style/Color.h"
#include "normalize/style/Property.h"

namespace tznormalize {

// Plain values, copied downwards. Views live as long as the Cascade and its document. Values have no blanks
// around them and are never "inherit", "initial" or "unset".
class Style {
  public:
    // All initial values.
    Style();

    QStringView operator[](Property property) const { return values_[size_t(property)]; }

    // For a copy that is to differ. `value` must live as long as the style. Not for the font size.
    void set(Property property, QStringView value);

    // Computed, in user units.
    double fontSize() const { return fontSize_; }

    // What `currentColor` stands for.
    const Color& currentColor() const { return color_; }

  private:
    friend class Cascade;

    std::array<QStringView, kStyleCount> values_;
    double fontSize_ = 12;
    Color color_;
};

}  // namespace tznormalize
