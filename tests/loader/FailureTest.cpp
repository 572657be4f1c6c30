// Documents that are recognised and then refused, hosts that fail, calls out of order, and that none of it is
// seen by anything else.
#include <functional>

#include "hostsdk/ITzSceneLoader.h"
#include "tests/common/Table.h"
#include "tests/loader/LoaderFixture.h"

namespace tzhost {
namespace {

// Touches every part of an import: groups, definitions, a percentage, sub-paths, styles, a doctype.
constexpr char kRich[] =
    "<!DOCTYPE svg><svg width='200' height='100' viewBox='0 0 2 1' version='1.1'><defs><a/></defs>"
    "<clipPath/><i:pgf id='adobe_illustrator_pgf'/><g id='o'><path d='M0 0L1 1M2 2L3 3' id='p'/>"
    "<switch><rect width='50%' height='50%' fill='red' stroke='blue'/></switch></g></svg>";
// Percentages here are of 1 by 1, and group and path numbers start at 1.
constexpr char kOther[] =
    "<svg><g id='n'><circle r='50%'/></g><path d='M0 0L1 1M2 2L3 3'/><polygon points='1,1'/></svg>";

class Failure : public LoaderTest {
  protected:
    CTzPtr<ITzSceneLoader> loader() {
        return session_.host.servers().spawn<ITzSceneLoader>("SVG_SceneLoader");
    }
    TzResult recognise(ITzSceneLoader& loader, const std::string& document) {
        return loader.recognise(tzText(folder_.write("drawing.svg", document).native()));
    }
    // start() and load() into a new scene.
    TzResult load(ITzSceneLoader& loader) {
        scene_ = session_.host.makeScene();
        const TzResult started = loader.start(scene_.get());
        return tzFailed(started) ? started : loader.load(nullptr);
    }
    TzResult load(ITzSceneLoader& loader, const std::string& document) {
        const TzResult recognised = recognise(loader, document);
        return tzFailed(recognised) ? recognised : load(loader);
    }
    std::string imported(const std::string& document) { return imports(document) ? everything() : refusal_; }
};

TEST_F(Failure, documents) {
    const std::string good = imported(kRich);
    for (const auto& row : readTable("loader/refused-documents.txt", 2)) {
        SCOPED_TRACE(row[0]);
        import("<svg>" + row[0] + "</svg>");
        if (row[1] == "loads") {
            EXPECT_EQ(refusal_, "");
            continue;
        }
        EXPECT_EQ(refusal_, (folder_ / "drawing.svg").native() + ": load: 0x80000000 (failed)");
        EXPECT_EQ(scene_->items().size(), 0U);
        int nodes = 0;
        for (const std::string& line : log_) nodes += line.rfind("Parsing node", 0) == 0;
        if (row[1] != "-") {
            EXPECT_EQ(nodes, std::stoi(row[1]));
        }
        EXPECT_EQ(imported(kRich), good);
    }
    EXPECT_FALSE(imports("<g><svg/></g>"));  // the group is under no root
    EXPECT_EQ(code_, kTzFailed);
    EXPECT_FALSE(imports("<svg width='1e999' height='1'><line x1='1%'/></svg>"));
    EXPECT_EQ(code_, kTzFailed);
}

// Text that is kept once for each polygon or each level must not multiply a small file.
TEST_F(Failure, smallFilesThatGrow) {
    const std::string longText(100000, 'x');
    std::string attributed = "<g";
    for (int i = 0; i < 4096; ++i) attributed += " a" + std::to_string(i) + "=''";
    attributed += "/>";
    const struct {
        const char* what;
        std::string document;
        TzResult code;
    } rows[] = {
        {"group names", "<g id='" + longText + "'>" + repeated("<rect/>", 2000) + "</g>", kTzOutOfMemory},
        {"styles of sub-paths", "<path style='" + longText + "' d='" + repeated("M0 0L1 1", 4000) + "'/>",
         kTzOutOfMemory},
        {"definitions",
         repeated("<defs>", 250) + "<g id='" + repeated(longText, 4) + "'/>" + repeated("</defs>", 250),
         kTzOutOfMemory},
        {"clip paths",
         repeated("<clipPath>", 250) + "<g id='" + repeated(longText, 4) + "'/>" +
             repeated("</clipPath>", 250),
         kTzOutOfMemory},
        {"a few", "<g id='" + longText + "'>" + repeated("<rect/>", 100) + "</g>", kTzOk},
        {"many attributes on eight elements", repeated(attributed, 8), kTzOk},
        {"and on one more", repeated(attributed, 9), kTzNotRecognised},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        import("<svg>" + row.document + "</svg>");
        EXPECT_EQ(code_, row.code);
        EXPECT_EQ(scene_->items().size(), row.code == kTzOk ? 1U : 0U);
    }
    const auto declared = [&](size_t notations) {
        std::string all;
        for (size_t i = 0; i < notations; ++i) all += "<!NOTATION n" + std::to_string(i) + " SYSTEM 's'>";
        return "<!DOCTYPE svg [" + all + "]><svg/>";
    };
    EXPECT_TRUE(imports(declared(4096)));
    EXPECT_FALSE(imports(declared(4097)));
    EXPECT_TRUE(imports(kRich));
}

TEST_F(Failure, callsOutOfOrder) {
    const auto svg = loader();
    const ScenePtr scene = session_.host.makeScene();
    EXPECT_EQ(svg->load(nullptr), kTzNotReady);
    EXPECT_EQ(svg->start(scene.get()), kTzNotReady);
    EXPECT_EQ(recognise(*svg, kRich), kTzOk);
    EXPECT_EQ(svg->load(nullptr), kTzNotReady);
    EXPECT_EQ(svg->start(nullptr), kTzInvalidArgument);
    EXPECT_EQ(load(*svg), kTzOk);
    EXPECT_EQ(svg->load(nullptr), kTzNotReady);
    EXPECT_EQ(svg->start(scene.get()), kTzNotReady);  // a load consumes its document

    EXPECT_EQ(recognise(*svg, kRich), kTzOk);
    EXPECT_EQ(recognise(*svg, "no"), kTzNotRecognised);  // nothing is kept
    EXPECT_EQ(svg->start(scene.get()), kTzNotReady);
    EXPECT_EQ(recognise(*svg, kRich), kTzOk);
    EXPECT_EQ(svg->reset(), kTzOk);
    EXPECT_EQ(svg->start(scene.get()), kTzNotReady);
    EXPECT_EQ(scene->items().size(), 0U);

    const auto alive = session_.host.gate().objectsAlive();
    EXPECT_EQ(recognise(*svg, kRich), kTzOk);
    EXPECT_EQ(svg->start(session_.host.makeScene().get()), kTzOk);
    EXPECT_NE(session_.host.gate().objectsAlive(), alive);
    EXPECT_EQ(svg->reset(), kTzOk);
    EXPECT_EQ(session_.host.gate().objectsAlive(), alive) << "the scene is kept";
}

// Whatever stands between two loads, the second is like a first: by the same loader or by another.
TEST_F(Failure, loadsSeeNothingOfEachOther) {
    const std::string rich = imported(kRich);
    const std::string other = imported(kOther);
    ASSERT_NE(rich, other);
    const auto a = loader();
    const auto b = loader();
    const struct {
        const char* what;
        std::function<void()> between;
    } rows[] = {
        {"nothing", [] {}},
        {"a load", [&] { EXPECT_EQ(load(*a, kRich), kTzOk); }},
        {"a load and a reset",
         [&] {
             EXPECT_EQ(load(*a, kRich), kTzOk);
             EXPECT_EQ(a->reset(), kTzOk);
         }},
        {"a reset after the start",
         [&] {
             EXPECT_EQ(recognise(*a, kRich), kTzOk);
             EXPECT_EQ(a->start(session_.host.makeScene().get()), kTzOk);
             EXPECT_EQ(a->reset(), kTzOk);
         }},
        {"a refused load",
         [&] {
             EXPECT_EQ(load(*a,
                            "<svg width='9' height='9'><g><path d='M0 0L1 1M2 2'/><g transform='x'>"
                            "<rect/></g></g></svg>"),
                       kTzFailed);
         }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        row.between();
        EXPECT_EQ(recognise(*a, kOther), kTzOk);
        EXPECT_EQ(recognise(*b, kRich), kTzOk);  // interleaved: b comes and goes before a's load
        EXPECT_EQ(load(*b), kTzOk);
        EXPECT_EQ(everything(), rich);
        EXPECT_EQ(load(*a), kTzOk);
        EXPECT_EQ(everything(), other);
    }

    // Both started at once.
    EXPECT_EQ(recognise(*a, kOther), kTzOk);
    EXPECT_EQ(recognise(*b, kRich), kTzOk);
    const ScenePtr sceneOfB = session_.host.makeScene();
    EXPECT_EQ(b->start(sceneOfB.get()), kTzOk);
    EXPECT_EQ(load(*a), kTzOk);
    EXPECT_EQ(everything(), other);
    EXPECT_EQ(b->load(nullptr), kTzOk);
    scene_ = sceneOfB;
    EXPECT_EQ(everything(), rich);
}

}  // namespace
}  // namespace tzhost
