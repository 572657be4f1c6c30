#include "normalize/content/TextOutlines.h"

#include <QSet>

#include "normalize/content/TextLayout.h"
#include "normalize/convert/Shapes.h"
#include "svg/GuiApplication.h"

namespace tznormalize {
namespace {

// How many letters all texts of a drawing may come to, each counted as often as it is drawn: `use` multiplies
// them.
constexpr size_t kMostLetters = 200'000;

void note(Conversion& conversion, NoteCode code, const SourceElement& text, const QString& what) {
    addNote(conversion, code, text, what);
}

void noteFonts(Conversion& conversion, const TextContent& content) {
    for (const TextRun& run : content.runs) {
        const TextSpan& span = content.spans[run.span];
        const Face& face = conversion.fonts.face(span.place.style);
        if (face.isSubstitute) {
            addNote(conversion, NoteCode::kApproximated, *span.element,
                    QStringLiteral("the font \"%1\" is not installed; \"%2\" stands for it")
                        .arg(face.wanted, face.found),
                    "font-family");
        }
    }
}

bool canDraw(Conversion& conversion, const SourceElement& text, const TextContent& content) {
    conversion.letters += size_t(content.words.size());
    if (conversion.letters > kMostLetters) {
        note(conversion, NoteCode::kLeftOut, text, QStringLiteral("the drawing has too many letters"));
        return false;
    }
    if (!tzsvg::ensureGuiApplication()) {
        note(conversion, NoteCode::kLeftOut, text, QStringLiteral("Qt cannot lay out text in this process"));
        return false;
    }
    return true;
}

}  // namespace

std::string convertText(Conversion& conversion, const SourceElement& text, const Place& place,
                        OutputElement& group, Target& target) {
    const TextContent content = readTextContent(conversion, text, place);
    if (content.words.trimmed().isEmpty() || !canDraw(conversion, text, content)) return {};
    std::vector<TextPart> parts = layOutText(conversion, content);
    std::vector<PlacedPath> object;
    object.reserve(parts.size());
    for (TextPart& part : parts) object.push_back({std::move(part.path), place.ctm});
    for (size_t i = 0; i < parts.size(); ++i) {
        Place own = content.spans[parts[i].span].place;
        if (own.style[Property::kVisibility] != u"visible") continue;
        own.style.set(Property::kFillRule, u"nonzero");
        own.style.set(Property::kClipRule, u"nonzero");
        drawOutline(conversion, object[i].path, own, PlacedPaths(object), group, target);
    }
    if (target.isMeasured || group.children().empty()) return {};
    note(conversion, NoteCode::kCarried, text, QStringLiteral("it became the outlines of its letters"));
    noteFonts(conversion, content);
    return content.words.trimmed().toUtf8().toStdString();
}

}  // namespace tznormalize
