// A run of letters laid out by Qt: which glyphs, how far apart, and their outlines.
#pragma once

#include <QString>
#include <QTextLayout>
#include <vector>

#include "normalize/content/Fonts.h"
#include "normalize/geometry/Matrix.h"

namespace tznormalize {

// Lengths in user units. The outline's origin is where the run begins on its baseline, at its left end
// whatever the direction. Letters are counted by QChar from the start of the run.
class ShapedRun {
  public:
    ShapedRun(const QString& words, const Face& face, double fontSize, bool isRightToLeft);

    double width() const { return width_; }
    int length() const { return int(layout_.text().size()); }

    // The first letter behind `at` that is written apart from it: accents belong to their letters.
    int next(int at) const { return layout_.nextCursorPosition(at); }

    // Where letters stand: their left end and their width.
    struct Extent {
        double left, width;
    };
    Extent extent(int from, int to) const;

    // The outline of letters; the run's own origin.
    Path outline(Fonts& fonts, int from, int to) const;

    // Whether no font has some of its characters: boxes are drawn for them.
    bool lacksGlyphs() const;

    // Lines along the letters: the rectangle of each, over the width given.
    struct Line {
        double top, thickness;  // below the baseline
    };
    Line underline() const;
    Line overline() const;
    Line lineThrough() const;

    double ascent() const { return line_.ascent() * scale_; }
    double descent() const { return line_.descent() * scale_; }
    double xHeight() const;

  private:
    double measure() const;

    QTextLayout layout_;
    QTextLine line_;
    double scale_;  // from font units to user units
    bool isEmboldened_;
    double width_ = 0.0;
};

}  // namespace tznormalize
