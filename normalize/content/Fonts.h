// The fonts that text is drawn with: found by fontconfig, as other programs find them, and loaded by Qt.
#pragma once

#include <QFont>
#include <QRawFont>
#include <QString>
#include <list>
#include <unordered_map>

#include "normalize/geometry/Path.h"

namespace tznormalize {

class Style;

// A font at kFontUnits pixels for one em.
struct Face {
    QFont font;
    QString wanted;     // the first family asked for that is no generic one; empty when there is none
    QString found;      // the family that stands for it
    bool isSubstitute;  // whether `found` is another than `wanted`
    bool isEmboldened;  // bold letters are to be made of others, for there are none
};

// Pixels for one em: so many that hinting and rounding to pixels do not matter.
constexpr int kFontUnits = 1000;

// The fonts and letters used so far. Needs a QGuiApplication. What it returns stays valid.
class Fonts {
  public:
    // The face for the font properties of a style, its spacing included.
    const Face& face(const Style& style);

    // The outline of a glyph in font units, its origin at (0, 0), y downwards; empty for what has none, such
    // as blanks and coloured pictures of letters.
    const Path& outline(const QRawFont& font, quint32 glyph, bool isEmboldened);

  private:
    struct Letters {
        QRawFont font;
        bool isEmboldened;
        std::unordered_map<quint32, Path> outlines;
    };

    std::unordered_map<QString, Face> faces_;
    std::list<Letters> letters_;  // few
};

}  // namespace tznormalize
