// Lengths: a number with an optional unit, as in every geometric attribute of the basic shapes; and what the
// lengths of one load are relative to.
#pragma once

#include <QString>

namespace tzsvg {

// Along which axis a length lies: decides which percent reference it takes.
enum class Axis : unsigned { kHorizontal = 0, kVertical = 1 };

// Unit codes, in the order in which the reader tests the suffixes.
enum class Unit : unsigned { kEm, kEx, kPx, kPt, kPc, kCm, kMm, kIn, kPercent };

// What the lengths of one load are multiplied by. Every load starts from a fresh one.
class LengthContext {
  public:
    // The factor on every length and plain number: nothing changes it, it is here so that a different unit of
    // the scene can be chosen in one place. Single precision.
    float scale() const { return scale_; }

    // What one percent is along an axis: the document's extent times 0.01; of a document of 1 x 1 at first.
    double percent(Axis axis) const {
        return axis == Axis::kVertical ? verticalPercent_ : horizontalPercent_;
    }

    // Takes the document's extent, in user units.
    void setPercentReferences(double width, double height);

    // Takes the extent from a view box "min-x min-y width height" with blanks between; text that does not
    // read as four numbers changes nothing.
    void setPercentReferencesFromViewBox(QStringView viewBox);

  private:
    float scale_ = 1.0F;
    double horizontalPercent_ = 0.01;
    double verticalPercent_ = 0.01;
};

// Reads a length. Never fails: what cannot be read is 0.0. Absolute units come out in metres, "px", "em",
// "ex" and plain numbers in user units. May be infinite or not a number for text such as "1e999" or "nanpx".
double parseLength(QStringView text, Axis axis, const LengthContext& context);

// The value of a number text in a unit; 0.0 for a unit code of 9 or more.
double convertUnit(QStringView number, Unit unit, Axis axis, const LengthContext& context);

}  // namespace tzsvg
