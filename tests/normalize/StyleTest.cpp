// Style sheets, inheritance and colours.
#include <gtest/gtest.h>

#include "normalize/style/Cascade.h"
#include "normalize/style/Color.h"
#include "normalize/style/Reference.h"

namespace tznormalize {
namespace {

// Which elements of the document, by id, a rule with that selector reaches.
std::string reached(const char* selector) {
    const QByteArray bytes = QByteArray("<svg xmlns='http://www.w3.org/2000/svg' id='S'><style>") + selector +
                             "{fill:red}</style><g id='a' class='x y' data-n='one two'><rect id='b' "
                             "class='x'/><path id='c' lang='en-GB'/>"
                             "<g id='d'><rect id='e' class='z-x y'/><path id='f' class='x'/></g></g><path "
                             "id='h' class='1.5'/></svg>";
    SourceDocument document;
    EXPECT_FALSE(document.read(QByteArray(bytes).replace(
        '>' + QByteArray(selector), '>' + QByteArray(selector).replace("&", "&amp;").replace("<", "&lt;"))));
    Notes notes;
    const Cascade cascade(document, notes);
    std::string ids;
    for (uint32_t i = 0; i < document.elementCount(); ++i) {
        const SourceElement& element = document.element(i);
        if (cascade.declared(element, Property::kFill) == u"red")
            ids += element.id().toString().toStdString();
    }
    if (!notes.list().empty()) ids += "!";
    return ids;
}

TEST(Cascade, selectors) {
    const struct {
        const char* selector;
        const char* ids;  // "!" when it was noted
    } cases[] = {
        {"rect", "be"},
        {"*|rect, #c", "bce"},
        {".x", "abf"},
        {"rect.y", "e"},
        {".x.y", "a"},
        {"g rect", "be"},
        {"g > rect", "be"},
        {"svg>g>rect", "b"},
        {"g g path", "f"},
        {"rect + path", "cf"},
        {"rect ~ g", "d"},
        {"rect:first-child", "be"},
        {":root > path", "h"},
        {"[class]", "abefh"},
        {"[class=x]", "bf"},
        {"[class~='x']", "abf"},
        {"[lang|=en]", "c"},
        {"[class^=z]", "e"},
        {"[class$=y]", "ae"},
        {"[data-n*='e t']", "a"},
        {".\\31 \\.5", "h"},
        {"path:hover", ""},
        {"rect::before", ""},
        {"rect:not(.x)", "!"},
        {"rect, :is(g)", "be!"},
        {"g > > rect", "!"},
        {"a{} rect", "be"},
        {"/* g */ rect/**/", "be"},
        {"<!-- rect", "be"},
        {"@import 'x'; rect", "be!"},
        {"@media screen { g {fill:red} } rect", "abde"},
        {"@media print { g {fill:red} } rect", "be"},
        {"@font-face { src: url(a;b) } rect", "be!"},
    };
    for (const auto& c : cases) EXPECT_EQ(reached(c.selector), c.ids) << c.selector;
}

// The value of a property that holds for the element "t" of a document.
std::string value(const char* sheet, const char* around, const char* attributes, Property property) {
    SourceDocument document;
    EXPECT_FALSE(document.read(QByteArray("<svg><style>") + sheet + "</style><g " + around +
                               "><rect id='t' class='c' " + attributes + "/></g></svg>"));
    Notes notes;
    const Cascade cascade(document, notes);
    const Style style = cascade.computedFromRoot(*document.byId(u"t"));
    if (property == Property::kFontSize) return std::to_string(style.fontSize());
    if (property == Property::kColor) return colorText(style.currentColor());
    return style[property].toString().toStdString();
}

TEST(Cascade, precedenceAndInheritance) {
    constexpr Property kFill = Property::kFill;
    const struct {
        const char* sheet;
        const char* around;
        const char* attributes;
        Property property;
        const char* value;
    } cases[] = {
        {"", "", "", kFill, "#000000"},
        {"", "fill='red'", "", kFill, "red"},
        {"", "opacity='.5'", "", Property::kOpacity, "1"},
        {"", "opacity='.5'", "opacity='inherit'", Property::kOpacity, ".5"},
        {"", "fill='red'", "fill=' blue '", kFill, "blue"},
        {"", "fill='red'", "fill='nonsense'", kFill, "red"},
        {"", "fill='red'", "fill='initial'", kFill, "#000000"},
        {"", "fill='red'", "style='fill:unset'", kFill, "red"},
        {"rect{fill:green}", "", "fill='blue'", kFill, "green"},
        {".c{fill:green} rect{fill:blue}", "", "", kFill, "green"},
        {"#t{fill:green} g .c{fill:blue}", "", "", kFill, "green"},
        {"rect{fill:green} rect{fill:blue}", "", "", kFill, "blue"},
        {"rect{fill:green}", "", "style='fill:blue;;x:y; STROKE:none'", kFill, "blue"},
        {"rect{fill:green ! important}", "", "style='fill:blue'", kFill, "green"},
        {"rect{fill:green!important}", "", "style='fill:blue !important'", kFill, "blue"},
        {"rect{fill:green;fill:nonsense}", "", "", kFill, "green"},
        {"", "", "style='fill:url(\"data:a;b#c\") red'", kFill, "url(\"data:a;b#c\") red"},
        {"", "", "style='/*a:b;*/fill/**/:red/*;*/'", kFill, "red"},
        {"", "", "style='marker:url(#m)'", Property::kMarkerMid, "url(#m)"},
        {"", "", "style='font:italic 700 10px/2 A, \"B C\"'", Property::kFontFamily, "A, \"B C\""},
        {"", "", "style='font:italic 700 10px/2 A'", Property::kFontWeight, "700"},
        {"", "", "style='font:700 10px A;font-weight:400'", Property::kFontWeight, "400"},
        {"", "", "style='font:10px'", Property::kFontSize, "12.000000"},
        {"", "font-size='20'", "font-size='150%'", Property::kFontSize, "30.000000"},
        {"", "font-size='20'", "style='font-size:2em'", Property::kFontSize, "40.000000"},
        {"", "font-size='20'", "font-size='smaller'", Property::kFontSize, "16.666667"},
        {"", "font-size='1in'", "", Property::kFontSize, "96.000000"},
        {"", "color='#123'", "color='currentColor'", Property::kColor, "#112233"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(value(c.sheet, c.around, c.attributes, c.property), c.value)
            << c.sheet << "; " << c.attributes;
}

// Nothing is read from elsewhere: what asks for it is noted.
TEST(Cascade, sheetsOfOtherFiles) {
    SourceDocument document;
    ASSERT_FALSE(
        document.read("<?xml-stylesheet href='#in'?><?xml-stylesheet href='a.css'?><svg><style id='in'>"
                      "@import 'b.css'; g{fill:red}</style><h:link xmlns:h='urn:h' rel='Stylesheet'/>"
                      "<link rel='icon'/></svg>"));
    Notes notes;
    const Cascade cascade(document, notes);
    ASSERT_EQ(notes.list().size(), 3U);
    EXPECT_EQ(notes.list()[0].element, QStringLiteral("svg"));
    EXPECT_EQ(notes.list()[1].element, QStringLiteral("style"));
    EXPECT_EQ(notes.list()[2].element, QStringLiteral("link"));
}

// A sheet that asks for more than it may is left, with a note, not followed for minutes.
TEST(Cascade, hostileSheet) {
    QByteArray bytes = "<svg><style>";
    for (int i = 0; i < 4000; ++i) bytes += "* * * * * :first-child{fill:red}";
    bytes += "</style>" + QByteArray("<g>").repeated(200) + QByteArray("<a/>").repeated(2000) +
             QByteArray("</g>").repeated(200) + "</svg>";
    SourceDocument document;
    ASSERT_FALSE(document.read(bytes));
    Notes notes;
    const Cascade cascade(document, notes);
    for (uint32_t i = 0; i < document.elementCount(); ++i)
        cascade.declared(document.element(i), Property::kFill);
    ASSERT_EQ(notes.list().size(), 1U);
    EXPECT_EQ(notes.list().front().code, NoteCode::kLeftOut);
}

TEST(Color, forms) {
    const struct {
        const char* text;
        const char* color;  // empty: none
        double opacity;
    } cases[] = {
        {"#1af", "#11aaff", 1},
        {"#1AF8", "#11aaff", 136 / 255.0},
        {" #12345680 ", "#123456", 128 / 255.0},
        {"#12345", "", 0},
        {"#12345g", "", 0},
        {"#ff0000 icc-color(x)", "#ff0000", 1},
        {"RED", "#ff0000", 1},
        {"cornflowerblue icc-color(a, 1)", "#6495ed", 1},
        {"transparent", "#000000", 0},
        {"currentColor", "#010203", 0.5},
        {"no-colour", "", 0},
        {"rgb(1, 2,3)", "#010203", 1},
        {"rgb(10%,50%,200%)", "#1a80ff", 1},
        {"rgba(1 2 3 / 50%)", "#010203", 0.5},
        {"rgb(1.4, 2.6, -3)", "#010300", 1},
        {"rgb(1,2)", "", 0},
        {"rgb(1,2,3,4,5)", "", 0},
        {"hsl(120, 100%, 50%)", "#00ff00", 1},
        {"hsla(-120deg 100% 25% / .5)", "#000080", 0.5},
    };
    for (const auto& c : cases) {
        const auto color = readColor(QString::fromUtf8(c.text), {1, 2, 3, 0.5});
        EXPECT_EQ(color ? colorText(*color) : "", c.color) << c.text;
        EXPECT_DOUBLE_EQ(color ? color->opacity : 0, c.opacity) << c.text;
    }
}

TEST(Reference, forms) {
    const struct {
        const char* text;
        const char* id;
        const char* fallback;
    } cases[] = {
        {"url(#a)", "a", ""},
        {" url( \"#a b\" ) red", "a b", "red"},
        {"url('other.svg#c')", "c", ""},
        {"url(other.png)", "", ""},
        {"#a", "", ""},
        {"url(#a", "", ""},
    };
    for (const auto& c : cases) {
        const QString text = QString::fromUtf8(c.text);
        const Reference reference = readReference(text);
        EXPECT_EQ(reference.id.toString().toStdString(), c.id) << c.text;
        EXPECT_EQ(reference.fallback.toString().toStdString(), c.fallback) << c.text;
    }
}

}  // namespace
}  // namespace tznormalize
