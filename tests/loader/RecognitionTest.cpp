// Which files the loader takes, and how their bytes become text.
#include "hostsdk/ITzSceneLoader.h"
#include "tests/loader/LoaderFixture.h"

namespace tzhost {
namespace {

// ASCII and U+00E9 ("\xE9" here) in code units of 2 or 4 bytes, behind a byte order mark.
std::string inUnits(const std::string& latin1, size_t size, bool bigEndian) {
    std::string bytes;
    const auto put = [&](uint32_t unit) {
        for (size_t i = 0; i < size; ++i)
            bytes += static_cast<char>(unit >> 8 * (bigEndian ? size - 1 - i : i));
    };
    put(0xFEFF);
    for (const char character : latin1) put(static_cast<unsigned char>(character));
    return bytes;
}

class Recognition : public LoaderTest {
  protected:
    TzResult recognise(const std::string& fileName) {
        return session_.host.servers().spawn<ITzSceneLoader>("SVG_SceneLoader")->recognise(tzText(fileName));
    }
};

TEST_F(Recognition, table) {
    const struct {
        const char* what;
        std::string document;
        bool recognised;
    } rows[] = {
        {"empty", "", false},
        {"blank", " \n", false},
        {"not XML", "hello", false},
        {"smallest", "<svg/>", true},
        {"no svg", "<g/>", false},
        {"upper case", "<SVG/>", false},
        {"prefixed", "<s:svg xmlns:s='http://www.w3.org/2000/svg'/>", false},
        {"not the root", "<a><svg/></a>", true},
        {"nested svg", "<svg><g><svg/></g></svg>", false},
        {"two roots", "<svg/><svg/>", false},
        {"svg in a comment and as text", "<svg><!-- <svg/> --><t><![CDATA[<svg/>]]></t></svg>", true},
        {"unclosed", "<svg><g></svg>", false},
        {"text behind the root", "<svg/>x", false},
        {"unquoted attribute", "<svg a=1/>", false},
        {"CR LF", "<?xml version='1.0'?>\r\n<svg>\r\n<g>\r\n</g>\r\n</svg>\r\n", true},
        {"LF", "<?xml version='1.0'?>\n<svg>\n<g>\n</g>\n</svg>\n", true},
        {"names joined by a line end", "<svg\nwidth='1'/>", false},
        {"257 levels", "<svg>" + repeated("<g>", 256) + repeated("</g>", 256) + "</svg>", false},
    };
    for (const auto& row : rows) {
        const std::string file = folder_.write("drawing.svg", row.document).native();
        EXPECT_EQ(recognise(file), row.recognised ? kTzOk : kTzNotRecognised) << row.what;
    }
    EXPECT_EQ(recognise((folder_ / "missing.svg").native()), kTzNotRecognised);
    EXPECT_EQ(recognise((folder_ / "").native()), kTzNotRecognised);
}

// Bytes become text by the byte order mark, else by the declared encoding, else as UTF-8; tags are UTF-8.
TEST_F(Recognition, encodings) {
    const std::string latin1 = "<svg><circle id='\xE9' r='1'/></svg>";
    const std::string utf8 = "<svg><circle id='\xC3\xA9' r='1'/></svg>";
    const struct {
        const char* what;
        std::string document;
        const char* id;
    } rows[] = {
        {"UTF-8", utf8, "\xC3\xA9"},
        {"UTF-8 by its mark", "\xEF\xBB\xBF" + utf8, "\xC3\xA9"},
        {"the mark wins", "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?>" + utf8, "\xC3\xA9"},
        {"UTF-16 LE", inUnits(latin1, 2, false), "\xC3\xA9"},
        {"UTF-16 BE", inUnits(latin1, 2, true), "\xC3\xA9"},
        {"UTF-32 LE", inUnits(latin1, 4, false), "\xC3\xA9"},
        {"UTF-32 BE", inUnits(latin1, 4, true), "\xC3\xA9"},
        {"declared", "<?xml version='1.0' encoding='ISO-8859-1'?>" + latin1, "\xC3\xA9"},
        {"declared, over two lines", "<?xml version='1.0' \nencoding=\"ISO-8859-1\"?>\n" + latin1,
         "\xC3\xA9"},
        {"declared, not known", "<?xml version='1.0' encoding='x-nobody'?>" + utf8, "\xC3\xA9"},
        {"not UTF-8", latin1, "\xEF\xBF\xBD"},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(imports(row.document)) << row.what << ": " << refusal_;
        EXPECT_EQ(tags("ELID"), row.id) << row.what;
    }
}

// Lines are joined with nothing between them, carriage returns are gone.
TEST_F(Recognition, joinsLinesOfText) {
    for (const char* end : {"\n", "\r\n", "\r"}) {
        ASSERT_TRUE(imports("<svg><g id='one" + std::string(end) + "two'><circle r='1'/></g></svg>"));
        EXPECT_EQ(tags("VGRP"), "onetwo");
    }
}

}  // namespace
}  // namespace tzhost
