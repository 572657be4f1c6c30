#include "normalize/content/TextContent.h"

#include <algorithm>

#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

// Lengths of a list, up to the first that is none.
std::vector<double> readLengths(QStringView text, Axis axis, const Place& place) {
    std::vector<double> out;
    qsizetype from = 0;
    for (qsizetype at = 0; at <= text.size(); ++at) {
        if (at < text.size() && !isBlank(text[at].unicode()) && text[at] != u',') continue;
        if (at > from) {
            const std::optional<double> length =
                readLength(text.mid(from, at - from), axis, place.viewport, place.style.fontSize());
            if (!length) return out;
            out.push_back(*length);
        }
        from = at + 1;
    }
    return out;
}

// By how much an element lifts its baseline over that of its parent. What "sub" and "super" are is a
// renderer's choice; these shares are those of drawing programs.
double liftOf(const Place& place) {
    const QStringView shift = place.style[Property::kBaselineShift];
    const double size = place.style.fontSize();
    if (shift.isEmpty() || shift == u"baseline") return 0.0;
    if (shift == u"sub") return -0.2 * size;
    if (shift == u"super") return 0.4 * size;
    return readLength(shift, Axis::kVertical, Viewport{size, size}, size).value_or(0.0);
}

bool isPartOfText(const SourceElement& element) {
    switch (element.tag()) {
        case Tag::kTspan:
        case Tag::kTref:
        case Tag::kTextPath:
        case Tag::kA:
            return true;
        default:
            return element.localName() == u"altGlyph";
    }
}

class Reader {
  public:
    explicit Reader(Conversion& conversion) : conversion_(conversion) {}

    TextContent read(const SourceElement& text, const Place& place) {
        readSpan(text, place, nullptr, keepsBlanks(text));
        finishWords();
        placeCharacters();
        return std::move(out_);
    }

  private:
    // xml:space of the element or what is around it.
    static bool keepsBlanks(const SourceElement& element) {
        for (const SourceElement* one = &element; one; one = one->parent()) {
            const QStringView space = one->attribute(Name::kXmlSpace);
            if (!space.isNull()) return space == u"preserve";
        }
        return false;
    }

    void readSpan(const SourceElement& element, const Place& place, const TextSpan* parent, bool keeps) {
        const QStringView space = element.attribute(Name::kXmlSpace);
        if (!space.isNull()) keeps = space == u"preserve";
        const QStringView whiteSpace = place.style[Property::kWhiteSpace];
        if (whiteSpace.startsWith(u"pre")) keeps = true;

        const size_t index = out_.spans.size();
        TextSpan span{&element, place, size_t(out_.words.size()), 0, liftOf(place), {}, nullptr};
        if (parent) {
            span.lift += parent->lift;
            span.decorations = parent->decorations;
            span.path = parent->path;
        }
        if (element.tag() == Tag::kTextPath) span.path = &element;
        const QStringView lines = place.style[Property::kTextDecoration];
        const Decoration own = {index, lines.contains(u"underline"), lines.contains(u"overline"),
                                lines.contains(u"line-through")};
        if (own.isUnderline || own.isOverline || own.isLineThrough) span.decorations.push_back(own);
        out_.spans.push_back(span);  // `span` stays for the children: the list may move

        if (element.tag() == Tag::kTref) {
            if (const SourceElement* const target = conversion_.source.target(element))
                addAllWords(*target, index, keeps);
        } else {
            addWords(element.text(), index, keeps);
            for (const SourceElement* child = element.firstChild(); child; child = child->nextSibling()) {
                if (isPartOfText(*child)) readChild(*child, span, keeps);
                addWords(child->tail(), index, keeps);
            }
        }
        out_.spans[index].to = size_t(out_.words.size());
    }

    void readChild(const SourceElement& child, const TextSpan& parent, bool keeps) {
        const Place& around = parent.place;
        const Place place = {around.ctm, conversion_.styles.computed(child, around.style, around.viewport),
                             around.viewport};
        if (place.style[Property::kDisplay] != u"none") readSpan(child, place, &parent, keeps);
    }

    // All characters in an element, for a reference to it.
    void addAllWords(const SourceElement& element, size_t span, bool keeps) {
        addWords(element.text(), span, keeps);
        for (const SourceElement* child = element.firstChild(); child; child = child->nextSibling()) {
            addAllWords(*child, span, keeps);
            addWords(child->tail(), span, keeps);
        }
    }

    // By the rules of xml:space: where blanks are not kept, line ends vanish, and of several blanks one is
    // left.
    void addWords(QStringView text, size_t span, bool keeps) {
        const size_t from = size_t(out_.words.size());
        for (QChar c : text) {
            const bool isLineEnd = c == u'\n' || c == u'\r';
            if (isLineEnd && !keeps) continue;
            if (isLineEnd || c == u'\t' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
                c = u' ';
            if (c.unicode() < u' ') continue;
            if (c == u' ' && !keeps && (out_.words.isEmpty() || isAfterBlank_)) continue;
            isAfterBlank_ = c == u' ';
            isLastKept_ = keeps;
            if (out_.words.size() >= TextContent::kMostCharacters) {
                isCut_ = true;
                break;
            }
            out_.words += c;
        }
        const size_t to = size_t(out_.words.size());
        if (from < to) out_.runs.push_back({span, from, to});
    }

    // The last blank does not count either.
    void finishWords() {
        if (isCut_)
            addNote(conversion_, NoteCode::kLeftOut, *out_.spans[0].element,
                    QStringLiteral("the rest of a very long text"));
        if (out_.words.isEmpty() || !isAfterBlank_ || isLastKept_) return;
        out_.words.chop(1);
        const size_t end = size_t(out_.words.size());
        for (TextSpan& span : out_.spans) {
            span.from = std::min(span.from, end);
            span.to = std::min(span.to, end);
        }
        if (--out_.runs.back().to == out_.runs.back().from) out_.runs.pop_back();
    }

    // Lists of inner elements win over those around them.
    void placeCharacters() {
        for (const TextSpan& span : out_.spans) {
            const auto lengths = [&](Name name, Axis axis) {
                return readLengths(span.element->attribute(name), axis, span.place);
            };
            const std::vector<double> x = lengths(Name::kX, Axis::kHorizontal);
            const std::vector<double> y = lengths(Name::kY, Axis::kVertical);
            const std::vector<double> dx = lengths(Name::kDx, Axis::kHorizontal);
            const std::vector<double> dy = lengths(Name::kDy, Axis::kVertical);
            const std::vector<double> rotate = readNumbers(span.element->attribute(Name::kRotate));
            const size_t count =
                rotate.empty() ? std::max({x.size(), y.size(), dx.size(), dy.size()}) : span.to - span.from;
            size_t number = 0;
            for (size_t at = span.from; at < span.to && number < count; ++at) {
                if (out_.words.at(int(at)).isLowSurrogate()) continue;
                CharacterPlace& place = out_.characters[at];
                if (number < x.size()) place.x = x[number];
                if (number < y.size()) place.y = y[number];
                if (number < dx.size()) place.dx = dx[number];
                if (number < dy.size()) place.dy = dy[number];
                if (!rotate.empty()) place.rotate = rotate[std::min(number, rotate.size() - 1)];
                ++number;
            }
        }
        // A text begins at its own place, which is the origin unless it says otherwise.
        if (out_.words.isEmpty()) return;
        CharacterPlace& first = out_.characters[0];
        if (!first.x) first.x = 0.0;
        if (!first.y) first.y = 0.0;
    }

    Conversion& conversion_;
    TextContent out_;
    bool isAfterBlank_ = false;
    bool isLastKept_ = false;
    bool isCut_ = false;
};

}  // namespace

TextContent readTextContent(Conversion& conversion, const SourceElement& text, const Place& place) {
    return Reader(conversion).read(text, place);
}

}  // namespace tznormalize
