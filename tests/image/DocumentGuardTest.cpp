// Which documents may go to a renderer. The refused ones crash it, hang it, or have it read what it must not.
#include "svg/guard/DocumentGuard.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zlib.h>

#include <QFile>
#include <QTemporaryDir>

#include "image/RendererPool.h"
#include "svg/GuiApplication.h"
#include "tests/image/GuardedDocuments.h"

using namespace tzsvg;

namespace {

struct GuardTest : ::testing::Test {
    GuardTest() {
        write("other.svg", svg("<rect width='9' height='9'/>"));
        write("\xC3\xA9.svg", svg("<rect width='9' height='9'/>"));
        write("disguised.png", svg("<rect width='9' height='9'/>"));
        write("photo.png", pngBytes());
        QFile::copy(path("other.svg"), path("noending.svg"));
        ::mkfifo(path("pipe.png").toUtf8().constData(), 0600);
        write("huge.png", hugePng());
        write("small.css", QByteArray("a{b:c}").repeated(100));
        write("large.css", QByteArray("a{b:c}").repeated(40000));
        write("huge.css", QByteArray((16 << 20) + 1, ' '));
    }

    // A drawing of 40,000 elements with a style sheet beside it.
    QByteArray linkedStyles(const char* name) const {
        return "<?xml-stylesheet type=\"text/css\" href=\"" + path(name).toUtf8() + "\"?>" + styled(0, 40000);
    }

    QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }

    void write(const char* name, const QByteArray& bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
};

}  // namespace

TEST_F(GuardTest, documents) {
    const QByteArray svgData = svg("<rect width='9' height='9'/>");
    const struct {
        const char* name;
        QByteArray document;
        bool safe;
    } rows[] = {
        {"plain", svg("<rect width='9' height='9'/>"), true},
        // The name has one letter in UTF-8, and the two of the file's in the encoding that is declared.
        {"another encoding, declared far on",
         "<?xml version='1.0'" + QByteArray(300, ' ') + "encoding='ISO-8859-1'?>" +
             svg("<image width='9' height='9' href='\xC3\xA9.svg'/>"),
         false},
        {"not XML", "hello", false},
        {"empty", "", false},
        {"cut off", "<svg><g>", false},
        {"something after the root", svg("") + "<rest", true},
        {"256 levels", nested(255), true},
        {"257 levels", nested(256), false},
        {"4096 attributes", attributes(4096), true},
        {"4097 attributes", attributes(4097), false},
        // Images.
        {"raster by data", image("data:image/png;base64," + pngBytes().toBase64()), true},
        {"full path", image(path("other.svg").toUtf8()), false},
        {"by data", image("data:image/svg+xml;base64," + svgData.toBase64()), false},
        {"by data, another type told", image("data:image/png;base64," + svgData.toBase64()), false},
        {"by data, percent encoded", image("data:image/svg+xml," + svgData.toPercentEncoding()), false},
        {"no prefix", svg("<image width='9' height='9' href='other.svg'/>"), false},
        {"two links", svg("<image width='9' height='9' href='photo.png' xlink:href='other.svg'/>"), false},
        {"a prefixed element", svg("<s:image xmlns:s='http://www.w3.org/2000/svg' xlink:href='other.svg'/>"),
         false},
        {"a default attribute",
         "<!DOCTYPE svg [<!ATTLIST image xlink:href CDATA 'other.svg'>]>" + svg("<image/>"), false},
        {"links of other elements",
         svg("<use xlink:href='#c'/><a id='b' xlink:href='#b'><a xlink:href='other.svg'/></a>"), true},
        // Uses.
        {"a use", svg("<rect id='a'/><use xlink:href='#a'/><use xlink:href='#nothing'/>"), true},
        {"2^16 uses", doubling(16), true},
        {"2^30 uses", doubling(30), false},
        {"use of itself", svg("<g id='a'><use xlink:href='#a'/></g>"), false},
        {"use in a ring", svg("<g id='a'><use href='#b'/></g><g xml:id='b'><use xlink:href='#a'/></g>"),
         false},
        {"200 uses of uses", chain(200), true},
        {"60,000 uses of uses", chain(60000), false},
        {"200 uses of uses, from the end", chainFromItsEnd(200), true},
        {"300 uses of uses, from the end", chainFromItsEnd(300), false},
        // Style sheets.
        {"styles", styled(100, 1000), true},
        {"styles times elements", styled(40000, 40000), false},
        {"selectors in one rule",
         svg("<style>a" + QByteArray(",a").repeated(40000) + "{b:c}</style>" +
             QByteArray("<g/>").repeated(40000)),
         false},
        {"selectors that climb",
         svg("<style>" + QByteArray("a g{}").repeated(4000) + "</style>" + QByteArray("<g>").repeated(200) +
             QByteArray("<g/>").repeated(1000) + QByteArray("</g>").repeated(200)),
         false},
        {"selectors of descendants", styled(100, 20000, "a g{}"), true},
        {"selectors of the next sibling", styled(100, 20000, "a+g{}"), false},
        {"selectors of later siblings", styled(100, 20000, "a ~ g{}"), false},
        {"a linked style sheet", linkedStyles("small.css"), true},
        {"a linked style sheet of many rules", linkedStyles("large.css"), false},
        {"a linked style sheet that is far too large", linkedStyles("huge.css"), false},
        {"stops", stops(4096), true},
        {"more stops", stops(4097), false},
        {"a style sheet that is a pipe",
         "<?xml-stylesheet type=\"text/css\" href=\"" + path("pipe.png").toUtf8() + "\"?>" + svg(""), false},
        // What a document type declares outside is not fetched; what it declares inside is bounded.
        {"external entity", "<!DOCTYPE svg [<!ENTITY e SYSTEM '/dev/zero'>]>" + svg("&e;"), true},
        {"entities of entities",
         "<!DOCTYPE svg [<!ENTITY a 'xxxxxxxxxxxxxxxx'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
         "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d "
         "'&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;'>]>" +
             svg("<text>&d;</text>"),
         false},
        {"UTF-16 without a mark",
         QByteArray(reinterpret_cast<const char*>(QString::fromUtf8(image("other.svg")).utf16()),
                    2 * image("other.svg").size()),
         false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        write("document.svg", row.document);
        EXPECT_EQ(inspectDocument(path("document.svg")).has_value(), row.safe);
    }
    for (const char* const href : {"document.svg", "other.svg", " other.svg ", "disguised.png", "noending",
                                   "pipe.png", "pipe", "/dev/zero", "huge.png"}) {
        write("document.svg", image(href));
        EXPECT_FALSE(inspectDocument(path("document.svg"))) << href;
    }
    for (const char* const href : {"photo.png", "nowhere.png", "."}) {
        write("document.svg", image(href));
        EXPECT_TRUE(inspectDocument(path("document.svg"))) << href;
    }
    EXPECT_FALSE(inspectDocument(path("nowhere.svg")));
    EXPECT_FALSE(inspectDocument(path("pipe.png")));
    EXPECT_FALSE(inspectDocument(QStringLiteral("/dev/zero")));
}

// What only the painter can tell.
TEST_F(GuardTest, dashes) {
    ASSERT_TRUE(ensureGuiApplication());
    const struct {
        const char* name;
        QByteArray document;
        bool safe;
    } rows[] = {
        {"some", dashed(10, "1 2"), true},
        {"half a million", dashed(300, "0.01 0.05"), true},
        {"two millions on one line", dashed(1000, "0.01 0.04"), false},
        {"two millions on a thin line", dashed(1000, "0.01 0.04;stroke-width:0.001"), false},
        {"half a million on a wide line", dashed(300, "0.01 0.05;stroke-width:90"), true},
        {"stretched with their line", scaled(dashed(1000, "10 40"), ""), true},
        {"of their own length on a stretched line",
         scaled(dashed(1000, "10 40"), "vector-effect='non-scaling-stroke'"), false},
        {"finer than the painter makes them", dashed(1000, "1e-9 1e-9"), true},
        {"none", dashed(1000, "none"), true},
        {"of no length", dashed(1000, "0 0"), true},
        {"infinite", dashed(1000, "inf 1e308 nan"), true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        write("document.svg", row.document);
        EXPECT_EQ(loadDrawing(path("document.svg")).renderer != nullptr, row.safe);
    }
}

TEST_F(GuardTest, linkedFilesAreTold) {
    write("document.svg", image("photo.png"));
    const auto document = inspectDocument(path("document.svg"));
    ASSERT_TRUE(document);
    EXPECT_EQ(document->linkedFiles, QStringList(path("photo.png")));
    write("document.svg", linkedStyles("small.css"));
    EXPECT_EQ(inspectDocument(path("document.svg"))->linkedFiles, QStringList(path("small.css")));
}

TEST_F(GuardTest, compressed) {
    const QByteArray document = svg("<rect width='9' height='9'/>");
    const QByteArray packed = gzip(document);
    const struct {
        const char* name;
        QByteArray bytes;
        QByteArray unpacked;  // empty: refused
    } rows[] = {
        {"a document", packed, document},
        {"two members", gzip(document.left(20)) + gzip(document.mid(20)), document},
        {"not compressed", document, {}},
        {"without checksum and size", packed.left(packed.size() - 8), document},
        {"cut short", packed.left(packed.size() - 12), {}},
        {"compressed twice", gzip(packed), {}},
        {"unpacks to 300 MB", gzip(svg(QByteArray(300 << 20, ' '))), {}},
        {"links start at the current folder", gzip(image("other.svg")), image("other.svg")},
        {"leads to an SVG", gzip(image(path("other.svg").toUtf8())), {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        write("document.SVGZ", row.bytes);
        const auto inspected = inspectDocument(path("document.SVGZ"));
        ASSERT_EQ(inspected.has_value(), !row.unpacked.isEmpty());
        if (inspected) {
            EXPECT_EQ(inspected->bytes, row.unpacked);
        }
    }
}
