#include "normalize/content/TextLayout.h"

#include <algorithm>

#include "normalize/content/PathLength.h"
#include "normalize/content/TextPieces.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/text/NumberCursor.h"
#include "normalize/text/Transform.h"

namespace tznormalize {
namespace {

bool isVertical(const Style& style) {
    const QStringView mode = style[Property::kWritingMode];
    return mode.startsWith(u"tb") || mode.startsWith(u"vertical");
}

// By how much the baseline lies below the line that the text is aligned by. Vertical text stands centred on
// its line.
double alignmentShift(const Style& style, const ShapedRun& run, bool isVertical) {
    QStringView line = style[Property::kAlignmentBaseline];
    if (line.isEmpty() || line == u"auto" || line == u"baseline") line = style[Property::kDominantBaseline];
    if (isVertical && (line.isEmpty() || line == u"auto")) line = u"central";
    if (line == u"middle") return run.xHeight() / 2.0;
    if (line == u"central") return (run.ascent() - run.descent()) / 2.0;
    if (line == u"hanging") return 0.8 * run.ascent();
    if (line == u"mathematical") return run.ascent() / 2.0;
    if (line == u"text-before-edge" || line == u"text-top" || line == u"before-edge") return run.ascent();
    if (line == u"text-after-edge" || line == u"text-bottom" || line == u"after-edge" ||
        line == u"ideographic")
        return -run.descent();
    return 0.0;
}

double trailingSpace(const Style& style) {
    return readLength(style[Property::kLetterSpacing], Axis::kNeither, Viewport{}, style.fontSize())
        .value_or(0.0);
}

// A rectangle over the letters of a piece.
Path lineOver(const TextPiece& piece, const ShapedRun::Line& line) {
    const double width = piece.advance / piece.stretch;
    return rectangleOutline({piece.left, line.top, piece.left + width, line.top + line.thickness})
        .mapped(piece.matrix);
}

class Placer {
  public:
    Placer(Conversion& conversion, const TextContent& content)
        : conversion_(conversion),
          content_(content),
          cut_(cutText(conversion, content)),
          isVertical_(isVertical(content.spans[0].place.style)) {
        if (isVertical_)
            addNote(conversion, NoteCode::kApproximated, *content.spans[0].element,
                    QStringLiteral("all letters of the vertical text lie on their sides"));
    }

    std::vector<TextPart> place() {
        std::vector<TextPiece>& pieces = cut_.pieces;
        for (size_t from = 0; from < pieces.size();) {
            size_t to = from + 1;
            while (to < pieces.size() && !beginsChunk(to)) ++to;
            placeChunk(from, to);
            from = to;
        }
        for (size_t from = 0; from < pieces.size();) {
            size_t to = from + 1;
            while (to < pieces.size() && pieces[to].span == pieces[from].span) ++to;
            addParts(from, to);
            from = to;
        }
        return std::move(parts_);
    }

  private:
    const TextSpan& spanOf(const TextPiece& piece) const { return content_.spans[piece.span]; }

    // Chunks are aligned each on its own: they begin where a letter is placed, and where a path begins or
    // ends.
    bool beginsChunk(size_t index) const {
        const TextPiece& piece = cut_.pieces[index];
        const SourceElement* const path = spanOf(piece).path;
        if (path != spanOf(cut_.pieces[index - 1]).path) return true;
        return !path && (piece.place.x || piece.place.y);
    }

    // Along the line and across it; vertical text runs down, its letters on their sides.
    Point alongAndAcross(double x, double y) const { return isVertical_ ? Point{y, -x} : Point{x, y}; }
    Point fromLine(double along, double across) const {
        return isVertical_ ? Point{-across, along} : Point{along, across};
    }

    void placeChunk(size_t from, size_t to) {
        const TextPiece& first = cut_.pieces[from];
        const Style& style = spanOf(first).place.style;
        pen_ = {first.place.x.value_or(pen_.x) + first.place.dx,
                first.place.y.value_or(pen_.y) + first.place.dy};
        const bool isRightToLeft = style[Property::kDirection] == u"rtl";

        std::vector<Point> starts;
        Point at;
        double left = 0.0;
        double right = 0.0;
        for (size_t i = from; i < to; ++i) {
            const TextPiece& piece = cut_.pieces[i];
            if (i > from) at = at + alongAndAcross(piece.place.dx, piece.place.dy);
            if (isRightToLeft) at.x -= piece.advance;
            starts.push_back(at);
            left = std::min(left, at.x);
            right = std::max(right, at.x + piece.advance);
            if (!isRightToLeft) at.x += piece.advance;
        }
        // No space is seen behind the last letter.
        right -= trailingSpace(style);
        const double shift = anchorShift(style[Property::kTextAnchor], left, right, isRightToLeft);
        if (const SourceElement* const path = spanOf(first).path)
            return placeOnPath(*path, from, starts, shift);
        for (size_t i = from; i < to; ++i) {
            TextPiece& piece = cut_.pieces[i];
            const double across = starts[i - from].y + acrossShift(piece);
            setMatrix(piece, pen_ + fromLine(starts[i - from].x + shift, across), isVertical_ ? 90.0 : 0.0);
        }
        pen_ = pen_ + fromLine(at.x + shift, at.y);
    }

    static double anchorShift(QStringView anchor, double left, double right, bool isRightToLeft) {
        if (anchor == u"middle") return -(left + right) / 2.0;
        if (anchor == u"end") return isRightToLeft ? -left : -right;
        return 0.0;
    }

    double acrossShift(const TextPiece& piece) const {
        const TextSpan& span = spanOf(piece);
        return alignmentShift(span.place.style, *piece.run, isVertical_) - span.lift;
    }

    static void setMatrix(TextPiece& piece, const Point& point, double direction) {
        piece.matrix = Matrix::translation(point.x, point.y) *
                       Matrix::rotation(direction + piece.place.rotate) *
                       Matrix::scaling(piece.stretch, 1.0) * Matrix::translation(-piece.left, 0.0);
    }

    // Letters stand with their middle on the path; those off its ends are not drawn.
    void placeOnPath(const SourceElement& textPath, size_t from, const std::vector<Point>& starts,
                     double shift) {
        const Place& place = spanOf(cut_.pieces[from]).place;
        const PathLength path(pathOf(textPath, place));
        const double offset = shift + startOffset(textPath, place, path.total());
        for (size_t i = 0; i < starts.size(); ++i) {
            TextPiece& piece = cut_.pieces[from + i];
            const double half = piece.advance / 2.0;
            const std::optional<PathLength::Spot> spot = path.at(offset + starts[i].x + half);
            piece.isHidden = !spot;
            if (!spot) continue;
            setMatrix(piece, {0.0, 0.0}, 0.0);
            piece.matrix = Matrix::translation(spot->point.x, spot->point.y) *
                           Matrix::rotation(spot->direction) *
                           Matrix::translation(-half, starts[i].y + acrossShift(piece)) * piece.matrix;
            pen_ = spot->point;
        }
        const bool isCut =
            std::any_of(cut_.pieces.begin() + long(from), cut_.pieces.begin() + long(from + starts.size()),
                        [](const TextPiece& one) { return one.isHidden; });
        if (isCut)
            addNote(conversion_, NoteCode::kLeftOut, textPath,
                    QStringLiteral("letters beyond the end of the path"));
    }

    // With the transform of the path element, in the space of the text.
    Path pathOf(const SourceElement& textPath, const Place& place) const {
        const SourceElement* const target = conversion_.source.target(textPath);
        if (!target || !isShape(target->tag())) return {};
        const Style style = conversion_.styles.computedFromRoot(*target);
        const QStringView own = style[Property::kTransform];
        return outlineOf(*target, conversion_.styles, place.viewport, style.fontSize())
            .mapped(own.isEmpty() ? Matrix() : readTransform(own).value_or(Matrix()));
    }

    static double startOffset(const SourceElement& textPath, const Place& place, double length) {
        return readLength(textPath.attribute(Name::kStartOffset), Axis::kHorizontal, Viewport{length, length},
                          place.style.fontSize())
            .value_or(0.0);
    }

    // The letters of pieces of one span, with the lines below and above them first and those through them
    // last.
    void addParts(size_t from, size_t to) {
        const std::vector<Decoration>& decorations = content_.spans[cut_.pieces[from].span].decorations;
        for (const Decoration& one : decorations) {
            if (one.isUnderline) addLines(from, to, one.span, &ShapedRun::underline);
            if (one.isOverline) addLines(from, to, one.span, &ShapedRun::overline);
        }
        TextPart letters{cut_.pieces[from].span, {}};
        for (size_t i = from; i < to; ++i) {
            const TextPiece& piece = cut_.pieces[i];
            if (piece.isHidden) continue;
            letters.path.append(
                piece.run->outline(conversion_.fonts, piece.from, piece.to).mapped(piece.matrix));
        }
        if (!letters.path.isEmpty()) parts_.push_back(std::move(letters));
        for (const Decoration& one : decorations) {
            if (one.isLineThrough) addLines(from, to, one.span, &ShapedRun::lineThrough);
        }
    }

    void addLines(size_t from, size_t to, size_t span, ShapedRun::Line (ShapedRun::*line)() const) {
        TextPart part{span, {}};
        for (size_t i = from; i < to; ++i) {
            const TextPiece& piece = cut_.pieces[i];
            if (!piece.isHidden) part.path.append(lineOver(piece, (piece.run->*line)()));
        }
        if (!part.path.isEmpty()) parts_.push_back(std::move(part));
    }

    Conversion& conversion_;
    const TextContent& content_;
    TextPieces cut_;
    bool isVertical_;
    Point pen_;
    std::vector<TextPart> parts_;
};

}  // namespace

std::vector<TextPart> layOutText(Conversion& conversion, const TextContent& content) {
    return Placer(conversion, content).place();
}

}  // namespace tznormalize
