// The check beside the module: what it says of a drawing is what an import and an export do with it.
#include <gtest/gtest.h>

#include <QStringList>

#include "host/ModuleLibrary.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/core/OperationError.h"
#include "normalize/check/Check.h"
#include "tests/common/TestFolder.h"

namespace tznormalize {
namespace {

std::string elements(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "<g>";
    for (int i = 0; i < depth; ++i) text += "</g>";
    return text;
}

// A drawing of a triangle and what the table says.
std::string drawing(const std::string& content) {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\">\n<path d=\"M1 1L5 1L5 5z\"/>\n" + content + "</svg>";
}

// "11" imported and exported, "10" imported only, "00" refused.
std::string verdictOfModule(const std::string& text) {
    const TestFolder folder;
    folder.write("a.svg", text);
    tzhost::Session session(TZSVG_MODULE);
    const tzhost::ScenePtr scene = session.host.makeScene();
    std::string verdict = "00";
    try {
        importFile(session.host, *scene, folder / "a.svg");
        verdict[0] = '1';
        exportFile(session.host, *scene, folder / "b.svg");
        verdict[1] = '1';
    } catch (const tzhost::OperationError&) {
        // The verdict says how far it came.
    }
    return verdict;
}

std::string verdictOf(const CheckReport& report) {
    return {report.isImported ? '1' : '0', report.isExported ? '1' : '0'};
}

TEST(Check, refusals) {
    const std::string cut = drawing("");
    struct {
        std::string text;
        const char* verdict;
        const char* code;
        int line;
        const char* where;  // element.attribute
        const char* says;   // a part of the text
    } const cases[] = {
        {drawing(""), "11", "", 0, "", ""},
        {"", "00", "empty", 0, ".", "empty"},
        {"hello", "00", "not-svg", 0, ".", "no markup"},
        {"<!DOCTYPE html>\n<html><body>hello<br></body></html>", "00", "not-svg", 0, ".", "\"html\""},
        {"<?xml version=\"1.0\"?><kml><a/></kml>", "00", "not-svg", 0, "kml.", "\"kml\""},
        {"<s:svg xmlns:s=\"http://www.w3.org/2000/svg\"/>", "00", "prefix", 1, "s:svg.", "prefix"},
        {std::string("\x1f\x8b\x08"), "00", "compressed", 0, ".", "compressed"},
        {cut.substr(0, cut.size() - 4), "00", "not-well-formed", 3, ".", "Premature end"},
        {drawing("<g a=1/>"), "00", "not-well-formed", 3, ".", ""},
        {"<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\"\n\"http://a/b.dtd\"><svg><path d=\"M0 0L1 0L1 "
         "1\"/></svg>",
         "00", "line-break", 2, ".", "joins words"},
        {drawing("<rect\nwidth=\"5\"\nheight=\"5\"/>"), "00", "line-break", 4, ".", "joins words"},
        {drawing("<svg/>"), "00", "nested-svg", 3, "svg.", "inside"},
        {drawing(elements(256)), "00", "limit", 0, ".", "256 deep"},
        {drawing("<path id=\"p\" d=\"M.5.5L1 1\"/>"), "00", "number-form", 3, "path.d",
         "\".5.5\" are numbers"},
        {drawing("<path d=\"M0 0L1e-5 3\"/>"), "00", "number-form", 3, "path.d", "\"1e-5\" has an exponent"},
        {drawing("<path d=\"M0 0L+1 3\"/>"), "00", "number-form", 3, "path.d", "plus sign"},
        {drawing("<path d=\"M0 0L1.5\n.5 3\"/>"), "00", "joined-numbers", 3, "path.d", "\"1.5 .5\""},
        {drawing("<path d=\"M0 0L\"/>"), "00", "value", 3, "path.d", "faulty"},
        {drawing("<path/>"), "00", "value", 3, "path.d", "no \"d\""},
        {drawing("<path d=\"\"/>"), "11", "", 0, "", ""},
        {drawing("<polygon points=\"0 0 5 5 9 9\"/>"), "00", "list-form", 3, "polygon.points", "pairs"},
        {drawing("<polyline points=\"0,0 1,2,3\"/>"), "00", "list-form", 3, "polyline.points", "pairs"},
        {drawing("<polygon points=\"\"/>"), "00", "value", 3, "polygon.points", "no points"},
        {drawing("<polyline points=\"\"/>"), "11", "", 0, "", ""},
        {drawing("<rect transform=\"scale(2) \"/>"), "00", "list-form", 3, "rect.transform",
         "ends with a blank"},
        {drawing("<rect transform=\"turn(2)\"/>"), "00", "value", 3, "rect.transform", "faulty"},
        {drawing("<g transform=\"scale(1e1)\"><rect/><rect/></g>"), "00", "number-form", 3, "g.transform",
         "exponent"},
        {drawing("<g transform=\"scale(1e1)\"/>"), "11", "", 0, "", ""},  // nothing asks for it
        {drawing("<switch transform=\"x\"><rect/></switch>"), "11", "", 0, "", ""},
        {drawing("<rect y=\"3000000000\"/>"), "00", "limit", 0, ".", "lower"},
        {drawing("<a><g/></a>"), "00", "group-place", 3, "g.", "\"a\""},
        {drawing("<switch><g/></switch>"), "11", "", 0, "", ""},
        {drawing("<defs><g><g/></g></defs>"), "10", "group-in-definitions", 3, "g.", ""},
        {drawing("<defs><g/></defs><pattern><g/></pattern>"), "11", "", 0, "", ""},
        {drawing("") + "<!-- made by hand -->", "10", "behind-root", 0, ".", "behind"},
        {"<svg><text>only words</text></svg>", "10", "no-polygon", 0, ".", "no shape"},
        {"<svg><line x2=\"9\" y2=\"8\"/></svg>", "10", "no-plane", 0, ".", "one line"},
        {"<svg><defs><rect width=\"5\" height=\"5\"/></defs></svg>", "10", "no-polygon", 0, ".", ""},
    };
    for (const auto& c : cases) {
        const CheckReport report = checkDrawing(QByteArray::fromStdString(c.text));
        EXPECT_EQ(verdictOf(report), c.verdict) << c.text;
        EXPECT_EQ(verdictOfModule(c.text), c.verdict) << c.text;
        const Finding* const reason = report.reason();
        ASSERT_EQ(reason != nullptr, *c.code != '\0') << c.text;
        if (reason == nullptr) continue;
        EXPECT_STREQ(reason->rule->code, c.code) << c.text;
        EXPECT_EQ(reason->line, c.line) << c.text;
        EXPECT_EQ(reason->element + u'.' + reason->attribute, QLatin1String(c.where)) << c.text;
        EXPECT_TRUE(reason->text.contains(QLatin1String(c.says)))
            << c.text << ": " << reason->text.toStdString();
    }
}

TEST(Check, losses) {
    // A shape that keeps all that it says, in a page that its outline fills.
    const std::string whole = " fill=\"red\" stroke=\"#000000\" stroke-width=\"1\"";
    const auto path = [&](const std::string& more) {
        return "<path d=\"M0 0L9 0L9 9L0 9\"" + whole + more + "/>";
    };
    struct {
        std::string content;
        const char* findings;  // code element.attribute, with commas between them
    } const cases[] = {
        {path(""), ""},
        {path("") + "<text>a</text><use/><image/>", "text text., use use., image image."},
        {path("") + "<style>.a{fill:red}</style>", "style-sheet style."},
        {path("") + "<symbol><rect/></symbol>", "loose-definition symbol."},
        {path("") + "<defs><text>a</text><rect/></defs>", ""},
        {"<path d=\"M0 0L9 0L9 9L0 9\" fill=\"red\"/>", "stroke path.stroke"},
        {"<path d=\"M0 0L9 0L9 9L0 9\" fill=\"red\" stroke=\"none\" stroke-width=\"0\"/>", ""},
        {"<path d=\"M0 0L9 0L9 9L0 9\" stroke=\"#f00\" stroke-width=\"1\"/>", "fill path.fill"},
        {"<path d=\"M0 0L9 0L9 9L0 9\" fill=\"red\" stroke=\"red\" stroke-width=\"1\"/>",
         "stroke-paint path.stroke"},
        {"<path d=\"M0 0L9 0L9 9L0 9\" style=\"fill:red;stroke:#f00; stroke-width:1\"/>",
         "stroke-width path.stroke-width"},
        {path(" display=\"none\""), "hidden path.display"},
        {path(" mask=\"url(#a)\""), "unkept path.mask"},
        {path(" style=\"; opacity:.5\""), "unseen path.opacity"},
        {path(" opacity=\".5\""), ""},
        {path(" transform=\"translate(0,0)\""), ""},
        {path(" transform=\"translate(1)\""), "transform path.transform, page svg.viewBox"},
        {path("") + "<path d=\"M0 0L5 0L5 5z\"" + whole + "/>", "closing path.d"},
        {path("") + "<path d=\"M0 0L5 0L5 5zl0 3\" fill=\"none\" stroke=\"none\" stroke-width=\"0\"/>",
         "other-value path.d"},
        {path("") + "<path d=\"M0 0L1\n0 2\n0 9 9\"" + whole + "/>", "joined-numbers path.d"},
        {path("") + "<circle r=\"1pt\"" + whole + "/>", "other-value circle.r"},
        {path("") + "<rect width=\"9\" height=\"9\"" + whole + "/>", "rect rect."},
        {"<g transform=\"scale(3)\"><path d=\"M0 0L3 0L3 3L0 3\"" + whole + "/></g>",
         "stroke-width path.stroke-width, page svg.viewBox"},
        {"<path d=\"M2 2L9 2L9 9\"" + whole + "/>", "page svg.viewBox"},
    };
    for (const auto& c : cases) {
        const CheckReport report = checkDrawing(QByteArray::fromStdString(
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 9 9\">" + c.content + "</svg>"));
        EXPECT_FALSE(report.isRefused()) << c.content;
        QStringList found;
        for (const Finding& finding : report.findings) {
            found.append(QLatin1String(finding.rule->code) + u' ' + finding.element + u'.' +
                         finding.attribute);
        }
        EXPECT_EQ(found.join(QLatin1String(", ")).toStdString(), c.findings) << c.content;
    }
}

TEST(Check, places) {
    const CheckReport report = checkDrawing("<svg>\n <g>\n  <path id=\"a\"/></g></svg>");
    ASSERT_NE(report.reason(), nullptr);
    EXPECT_EQ(report.reason()->line, 3);
    EXPECT_EQ(report.reason()->column, 3);
    EXPECT_EQ(report.reason()->id, QLatin1String("a"));
}

}  // namespace
}  // namespace tznormalize
