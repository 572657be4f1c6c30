// Numbers on the grid, names of definitions, and the document's text.
#include <gtest/gtest.h>

#include <cmath>

#include "normalize/write/Definitions.h"
#include "normalize/write/DocumentWriter.h"
#include "normalize/write/Grid.h"

namespace tznormalize {
namespace {

TEST(Grid, numbers) {
    const struct {
        int decimals;
        double value;
        const char* text;
    } cases[] = {
        {2, 0, "0"},
        {2, -0.004, "0"},
        {2, 0.005, "0.01"},
        {2, -1.5, "-1.5"},
        {3, 12.0304, "12.03"},
        {0, 99.5, "100"},
        {2, 1000, "1000"},
        {2, -0.05, "-0.05"},
        {1, -1e15, "-1000000000"},
        {3, 1e-9, "0"},
        {2, 999999.99, "999999.99"},  // eight digits
        {2, -1000000.05, "-1000000.05"},
        {2, std::nextafter(0.005, 0.0), "0"},
        {2, HUGE_VAL, "1000000000"},
        {2, std::nan(""), "0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Grid(c.decimals).text(c.value), c.text) << c.value;
        EXPECT_EQ(Grid(c.decimals).round(c.value), std::stod(c.text)) << c.value;
    }
    EXPECT_EQ(shortNumber(1234567.0), "1234567");
    EXPECT_EQ(shortNumber(0.000012345678), "0.0000123457");
    EXPECT_EQ(shortNumber(-2.50), "-2.5");
    EXPECT_EQ(shortNumber(1.0 / 3, 9), "0.333333333");
}

OutputElement with(const char* name, const char* attribute, const std::string& value) {
    OutputElement element(name);
    element.set(attribute, value);
    return element;
}

// Normalized input keeps its names, others keep clear of what the drawing has.
TEST(Definitions, namesAndUse) {
    SourceDocument source;
    ASSERT_FALSE(source.read("<svg><a id='paint1'/><b id='my (blue)'/></svg>"));
    Definitions definitions(source);
    const SourceElement* const blue = source.byId(u"my (blue)");
    EXPECT_EQ(definitions.freshName("paint", blue), "my__blue_");
    EXPECT_EQ(definitions.freshName("paint", blue), "paint2");
    EXPECT_EQ(definitions.freshName("clip"), "clip3");

    definitions.define(with("pattern", "id", "unused"));
    definitions.define(with("pattern", "id", "inner"));
    OutputElement outer = with("pattern", "id", "outer");
    outer.append(with("rect", "fill", "url(#inner) red"));
    definitions.define(std::move(outer));
    OutputElement clip = with("clipPath", "id", "clip");
    clip.append(with("use", "xlink:href", "#outer"));
    definitions.defineClip(std::move(clip));
    OutputElement root("svg");
    definitions.moveUsed(with("g", "clip-path", "url(#clip)"), root);
    root.set("data-name", "a\n<b> & \"c\"\x01");
    EXPECT_EQ(
        writeDocument(root, source).toStdString(),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><svg xmlns=\"http://www.w3.org/2000/svg\" "
        "xmlns:xlink=\"http://www.w3.org/1999/xlink\" data-name=\"a &lt;b&gt; &amp; &quot;c&quot;\">"
        "<defs><pattern id=\"inner\"/><pattern id=\"outer\"><rect fill=\"url(#inner) red\"/></pattern></defs>"
        "<clipPath id=\"clip\"><use xlink:href=\"#outer\"/></clipPath></svg>\n");
}

}  // namespace
}  // namespace tznormalize
