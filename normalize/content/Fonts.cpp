#include "normalize/content/Fonts.h"

#include <fontconfig/fontconfig.h>

#include <QPainterPath>
#include <QStringList>
#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>

#include "normalize/geometry/StrokeOutline.h"
#include "normalize/style/Style.h"
#include "normalize/text/Length.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

// What text without a family is drawn with, as other renderers have it.
constexpr const char* kDefaultFamily = "Times New Roman";

// Spacing so small that it is not seen: spaced letters form no ligatures. Other renderers form none either,
// and a letter is found as one.
constexpr double kNoLigatures = 1.0 / 64.0;

// A rim that makes letters bold, as wide as other programs make it.
const StrokeForm kEmboldening = {kFontUnits / 24.0, LineCap::kButt, LineJoin::kMiter, 4.0, {}, 0.0};

struct PatternDeleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternDeleter>;

// The names of a "font-family" list without their quotes.
QStringList readFamilies(QStringView text) {
    QStringList out;
    QString name;
    QChar quote;
    const auto finish = [&] {
        if (!name.trimmed().isEmpty()) out += name.trimmed();
        name.clear();
    };
    for (const QChar c : text) {
        if (!quote.isNull() ? c == quote : c == u'"' || c == u'\'') {
            quote = quote.isNull() ? c : QChar();
        } else if (c == u',' && quote.isNull()) {
            finish();
        } else {
            name += c;
        }
    }
    finish();
    if (out.isEmpty()) out += QString::fromLatin1(kDefaultFamily);
    return out;
}

bool isGeneric(const QString& family) {
    for (const char* const one :
         {"serif", "sans-serif", "sans", "monospace", "cursive", "fantasy", "system-ui"}) {
        if (family.compare(QLatin1String(one), Qt::CaseInsensitive) == 0) return true;
    }
    return false;
}

// From 1 to 1000.
int readWeight(QStringView text) {
    if (text == u"bold" || text == u"bolder") return 700;
    if (text == u"lighter") return 300;
    return int(std::clamp(readNumber(text).value_or(400.0), 1.0, 1000.0));
}

// Qt's weights of old have other numbers than those of CSS.
QFont::Weight qtWeight(int weight) {
    constexpr QFont::Weight kWeights[] = {QFont::Thin,   QFont::ExtraLight, QFont::Light,
                                          QFont::Normal, QFont::Medium,     QFont::DemiBold,
                                          QFont::Bold,   QFont::ExtraBold,  QFont::Black};
    const int index = std::clamp((weight + 50) / 100, 1, int(std::size(kWeights))) - 1;
    return kWeights[index];
}

struct Stretch {
    const char* name;
    int percent;
};
constexpr Stretch kStretches[] = {{"ultra-condensed", 50}, {"extra-condensed", 62}, {"condensed", 75},
                                  {"semi-condensed", 87},  {"semi-expanded", 112},  {"expanded", 125},
                                  {"extra-expanded", 150}, {"ultra-expanded", 200}, {"narrower", 75},
                                  {"wider", 125}};

int readStretch(QStringView text) {
    for (const Stretch& one : kStretches) {
        if (text == QLatin1String(one.name)) return one.percent;
    }
    return 100;
}

struct Wanted {
    QStringList families;
    int weight;
    int stretch;
    bool isItalic;
};

const FcChar8* utf8(const QByteArray& text) {
    return reinterpret_cast<const FcChar8*>(text.constData());
}

struct Match {
    QString family;
    bool isFirst = false;  // whether it is the first family wanted
    bool isEmboldened = false;
    int stretch = 100;  // of the face: Qt would stretch letters itself where it is not said
};

// The face that fontconfig finds, which tries all families in turn, knows what stands for which and what
// generic ones are here.
Match findFace(const Wanted& wanted) {
    const Pattern pattern(FcPatternCreate());
    for (const QString& family : wanted.families)
        FcPatternAddString(pattern.get(), FC_FAMILY, utf8(family.toUtf8()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, FcWeightFromOpenType(wanted.weight));
    FcPatternAddInteger(pattern.get(), FC_SLANT, wanted.isItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddInteger(pattern.get(), FC_WIDTH, wanted.stretch);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultMatch;
    const Pattern found(FcFontMatch(nullptr, pattern.get(), &result));
    Match out;
    out.family = wanted.families.first();
    if (!found) return out;
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(found.get(), FC_FAMILY, i, &name) == FcResultMatch; ++i) {
        const QString family = QString::fromUtf8(reinterpret_cast<const char*>(name));
        if (family.compare(wanted.families.first(), Qt::CaseInsensitive) == 0) out.isFirst = true;
        if (i == 0) out.family = family;
    }
    FcPatternGetInteger(found.get(), FC_WIDTH, 0, &out.stretch);
    FcBool isEmboldened = FcFalse;
    out.isEmboldened =
        FcPatternGetBool(found.get(), FC_EMBOLDEN, 0, &isEmboldened) == FcResultMatch && isEmboldened != 0;
    return out;
}

// "normal" and the like are no spacing.
double spacing(const Style& style, Property property) {
    return readLength(style[property], Axis::kNeither, Viewport{}, style.fontSize()).value_or(0.0) *
           kFontUnits / style.fontSize();
}

Face makeFace(const Style& style, double letterSpacing, double wordSpacing) {
    Wanted wanted = {
        readFamilies(style[Property::kFontFamily]), readWeight(style[Property::kFontWeight]),
        readStretch(style[Property::kFontStretch]),
        style[Property::kFontStyle] == u"italic" || style[Property::kFontStyle].startsWith(u"oblique")};
    const Match match = findFace(wanted);
    Face face;
    face.found = match.family;
    const bool isNamed = !isGeneric(wanted.families.first()) && !style[Property::kFontFamily].isEmpty();
    if (isNamed) face.wanted = wanted.families.first();
    face.isSubstitute = isNamed && !match.isFirst;
    face.isEmboldened = match.isEmboldened;
    face.font.setFamilies({match.family});
    face.font.setPixelSize(kFontUnits);
    face.font.setHintingPreference(QFont::PreferNoHinting);
    face.font.setStyleStrategy(QFont::ForceOutline);
    face.font.setWeight(qtWeight(wanted.weight));
    face.font.setItalic(wanted.isItalic);
    if (match.stretch != 100) face.font.setStretch(match.stretch);
    if (style[Property::kFontVariant] == u"small-caps") face.font.setCapitalization(QFont::SmallCaps);
    face.font.setLetterSpacing(QFont::AbsoluteSpacing, letterSpacing == 0.0 ? kNoLigatures : letterSpacing);
    face.font.setWordSpacing(wordSpacing);
    return face;
}

Path pathOf(const QPainterPath& glyph) {
    Path out;
    const auto at = [&](int i) { return Point{glyph.elementAt(i).x, glyph.elementAt(i).y}; };
    for (int i = 0; i < glyph.elementCount(); ++i) {
        switch (glyph.elementAt(i).type) {
            case QPainterPath::MoveToElement:
                if (!out.isEmpty()) out.close();
                out.moveTo(at(i));
                break;
            case QPainterPath::LineToElement:
                out.lineTo(at(i));
                break;
            default:
                out.curveTo(at(i), at(i + 1), at(i + 2));
                i += 2;
        }
    }
    if (!out.isEmpty()) out.close();
    return out;
}

}  // namespace

const Face& Fonts::face(const Style& style) {
    const double letterSpacing = spacing(style, Property::kLetterSpacing);
    const double wordSpacing = spacing(style, Property::kWordSpacing);
    QString key;
    for (const Property one : {Property::kFontFamily, Property::kFontWeight, Property::kFontStyle,
                               Property::kFontStretch, Property::kFontVariant})
        key += style[one].toString() + u'\n';
    key += QString::number(letterSpacing) + u'\n' + QString::number(wordSpacing);
    const auto found = faces_.find(key);
    if (found != faces_.end()) return found->second;
    return faces_.emplace(key, makeFace(style, letterSpacing, wordSpacing)).first->second;
}

const Path& Fonts::outline(const QRawFont& font, quint32 glyph, bool isEmboldened) {
    const auto isWanted = [&](const Letters& one) {
        return one.isEmboldened == isEmboldened && one.font == font;
    };
    auto letters = std::find_if(letters_.begin(), letters_.end(), isWanted);
    if (letters == letters_.end()) letters = letters_.insert(letters_.end(), Letters{font, isEmboldened, {}});
    const auto found = letters->outlines.find(glyph);
    if (found != letters->outlines.end()) return found->second;
    Path path = pathOf(font.pathForGlyph(glyph));
    if (isEmboldened && !path.isEmpty()) {
        path.append(strokeOutline(path, kEmboldening));
        path.map(Matrix::translation(kEmboldening.width / 2.0, -kEmboldening.width / 2.0));
    }
    return letters->outlines.emplace(glyph, std::move(path)).first->second;
}

}  // namespace tznormalize
