#include "normalize/content/TextPieces.h"

#include <algorithm>

namespace tznormalize {
namespace {

// Runs whose letters are placed one by one are shaped in parts no longer than this: where a letter stands is
// found by walking over the run.
constexpr size_t kLongestApart = 256;

bool isRightToLeft(const TextSpan& span) {
    return span.place.style[Property::kDirection] == u"rtl";
}

bool stretchesGlyphs(const SourceElement& element) {
    return element.attribute(Name::kLengthAdjust) == u"spacingAndGlyphs";
}

class Cutter {
  public:
    Cutter(Conversion& conversion, const TextContent& content) : conversion_(conversion), content_(content) {}

    TextPieces cut() {
        for (const TextRun& run : content_.runs) cutRun(run);
        // Inner elements first: what is around them is fitted to their length.
        for (size_t i = content_.spans.size(); i-- > 0;) fit(content_.spans[i]);
        return std::move(out_);
    }

  private:
    using Places = std::map<size_t, CharacterPlace>::const_iterator;

    // Whether each letter stands for itself: on a path, turned, or spaced out.
    bool isLoose(const TextRun& run) const {
        const TextSpan& span = content_.spans[run.span];
        if (span.path) return true;
        for (Places at = content_.characters.lower_bound(run.from);
             at != content_.characters.end() && at->first < run.to; ++at) {
            if (at->second.rotate != 0.0) return true;
        }
        return std::any_of(content_.spans.begin(), content_.spans.end(), [&](const TextSpan& one) {
            return one.from <= run.from && run.to <= one.to && one.element->has(Name::kTextLength) &&
                   !stretchesGlyphs(*one.element);
        });
    }

    // The end of a part that begins at `from`: behind a blank, if there is one near.
    size_t partEnd(size_t from, size_t to) const {
        if (to - from <= kLongestApart) return to;
        size_t end = from + kLongestApart;
        for (size_t at = end; at > from + kLongestApart / 2; --at) {
            if (content_.words.at(int(at) - 1) == u' ') return at;
        }
        if (content_.words.at(int(end)).isLowSurrogate()) ++end;
        return end;
    }

    void cutRun(const TextRun& run) {
        const bool loose = isLoose(run);
        const auto second = content_.characters.upper_bound(run.from);
        const bool isCut = second != content_.characters.end() && second->first < run.to;
        if (!loose && !isCut) return cutPart(run, false);
        for (size_t from = run.from; from < run.to;) {
            const size_t to = partEnd(from, run.to);
            cutPart({run.span, from, to}, loose);
            from = to;
        }
    }

    void cutPart(const TextRun& part, bool isLooseRun) {
        const TextSpan& span = content_.spans[part.span];
        const Style& style = span.place.style;
        const Face& face = conversion_.fonts.face(style);
        out_.runs.push_back(
            std::make_unique<ShapedRun>(content_.words.mid(int(part.from), int(part.to - part.from)), face,
                                        style.fontSize(), isRightToLeft(span)));
        const ShapedRun& run = *out_.runs.back();
        if (run.lacksGlyphs())
            addNote(conversion_, NoteCode::kApproximated, *span.element,
                    QStringLiteral("no font has some of its letters; boxes stand for them"));
        int from = 0;
        for (int at = 0; at < run.length();) {
            const int next = std::max(run.next(at), at + 1);
            const bool isEnd = next >= run.length() || isLooseRun || isPlaced(part.from + size_t(next));
            if (isEnd) {
                addPiece(part, run, from, std::min(next, run.length()));
                from = next;
            }
            at = next;
        }
    }

    bool isPlaced(size_t character) const { return content_.characters.count(character) != 0; }

    void addPiece(const TextRun& part, const ShapedRun& run, int from, int to) {
        const size_t character = part.from + size_t(from);
        TextPiece piece{part.span, &run, from, to, character, {}, 0.0, run.width()};
        if (const auto place = content_.characters.find(character); place != content_.characters.end())
            piece.place = place->second;
        if (from > 0 || to < run.length()) {
            const ShapedRun::Extent extent = run.extent(from, to);
            piece.left = extent.left;
            piece.advance = extent.width;
        }
        out_.pieces.push_back(piece);
    }

    // Makes the letters of an element as long as its textLength says.
    void fit(const TextSpan& span) {
        const Place& place = span.place;
        const std::optional<double> wanted =
            readLength(span.element->attribute(Name::kTextLength), Axis::kHorizontal, place.viewport,
                       place.style.fontSize());
        if (!wanted || *wanted < 0.0) return;
        const auto isBefore = [](const TextPiece& one, size_t character) {
            return one.character < character;
        };
        const auto first = std::lower_bound(out_.pieces.begin(), out_.pieces.end(), span.from, isBefore);
        const auto last = std::lower_bound(first, out_.pieces.end(), span.to, isBefore);
        if (first == last) return;
        double length = 0.0;
        for (auto one = first; one != last; ++one)
            length += one->advance + (one == first ? 0.0 : one->place.dx);
        if (!(length > 0.0)) return;
        const double share = *wanted / length;
        const double gap = last - first > 1 ? (*wanted - length) / double(last - first - 1) : 0.0;
        for (auto one = first; one != last; ++one) {
            if (stretchesGlyphs(*span.element)) {
                one->stretch *= share;
                one->advance *= share;
            } else if (one + 1 != last) {
                one->advance += gap;
            }
        }
    }

    Conversion& conversion_;
    const TextContent& content_;
    TextPieces out_;
};

}  // namespace

TextPieces cutText(Conversion& conversion, const TextContent& content) {
    return Cutter(conversion, content).cut();
}

}  // namespace tznormalize
