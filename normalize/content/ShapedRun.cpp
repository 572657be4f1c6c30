#include "normalize/content/ShapedRun.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QTextOption>
#include <QtEndian>
#include <algorithm>

namespace tznormalize {
namespace {

// A number of a font's table, in shares of an em; `otherwise` where there is no such table.
double fontNumber(const QRawFont& font, const char* table, int offset, double otherwise) {
    const QByteArray bytes = font.fontTable(table);
    if (bytes.size() < offset + 2 || font.unitsPerEm() <= 0.0) return otherwise;
    return qFromBigEndian<qint16>(bytes.constData() + offset) / font.unitsPerEm();
}

bool hasRightToLeft(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        const QChar::Direction direction = c.direction();
        return direction == QChar::DirR || direction == QChar::DirAL || direction == QChar::DirRLE ||
               direction == QChar::DirRLO || direction == QChar::DirRLI || c.isHighSurrogate();
    });
}

}  // namespace

ShapedRun::ShapedRun(const QString& words, const Face& face, double fontSize, bool isRightToLeft)
    : scale_(fontSize / kFontUnits), isEmboldened_(face.isEmboldened) {
    QTextOption option;
    option.setUseDesignMetrics(true);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
    layout_.setText(words);
    layout_.setFont(face.font);
    layout_.setTextOption(option);
    layout_.setCacheEnabled(true);
    layout_.beginLayout();
    line_ = layout_.createLine();
    line_.setNumColumns(int(words.size()));
    layout_.endLayout();
    width_ = measure();
}

// Qt's own width has a margin for letters that lean over their end; but where text runs in both directions,
// no letter tells how far it reaches.
double ShapedRun::measure() const {
    if (hasRightToLeft(layout_.text())) return line_.naturalTextWidth() * scale_;
    return extent(0, length()).width;
}

ShapedRun::Extent ShapedRun::extent(int from, int to) const {
    const double a = line_.cursorToX(from) * scale_;
    const double b = line_.cursorToX(to - 1, QTextLine::Trailing) * scale_;
    return {std::min(a, b), std::abs(b - a)};
}

Path ShapedRun::outline(Fonts& fonts, int from, int to) const {
    Path out;
    const QList<QGlyphRun> runs = line_.glyphRuns(from, to - from);
    for (const QGlyphRun& run : runs) {
        const QRawFont font = run.rawFont();
        const QVector<quint32> glyphs = run.glyphIndexes();
        const QVector<QPointF> positions = run.positions();
        for (int i = 0; i < int(std::min(glyphs.size(), positions.size())); ++i) {
            const QPointF at = positions[i] - QPointF(0.0, line_.y() + line_.ascent());
            out.append(fonts.outline(font, glyphs[i], isEmboldened_)
                           .mapped({scale_, 0.0, 0.0, scale_, at.x() * scale_, at.y() * scale_}));
        }
    }
    return out;
}

bool ShapedRun::lacksGlyphs() const {
    const QList<QGlyphRun> runs = line_.glyphRuns();
    return std::any_of(runs.begin(), runs.end(),
                       [](const QGlyphRun& run) { return run.glyphIndexes().contains(0U); });
}

// Offsets of the OpenType tables "post" and "OS/2"; the shares are those of common fonts.
ShapedRun::Line ShapedRun::underline() const {
    const QRawFont font = QRawFont::fromFont(layout_.font());
    const double em = scale_ * kFontUnits;
    const double thickness = fontNumber(font, "post", 10, 0.05) * em;
    return {-fontNumber(font, "post", 8, -0.1) * em, thickness};
}

ShapedRun::Line ShapedRun::overline() const {
    const Line under = underline();
    return {-ascent(), under.thickness};
}

ShapedRun::Line ShapedRun::lineThrough() const {
    const QRawFont font = QRawFont::fromFont(layout_.font());
    const double em = scale_ * kFontUnits;
    return {-fontNumber(font, "OS/2", 28, 0.25) * em, fontNumber(font, "OS/2", 26, 0.05) * em};
}

double ShapedRun::xHeight() const {
    return QFontMetricsF(layout_.font()).xHeight() * scale_;
}

}  // namespace tznormalize
