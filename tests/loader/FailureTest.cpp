// Documents that are recognised and then refused, hosts that fail, calls out of order, and that none of it is
// seen by anything else.
#include <functional>

#include "hostsdk/ITzSceneLoader.h"
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
    constexpr int kLoads = -1;
    constexpr int kAnywhere = -2;  // where the load ends is not settled
    const struct {
        const char* what;
        std::string document;  // in a root element
        int nodesLogged;       // by the walk that ended there, or one of the two below
    } rows[] = {
        // What the largest y needs is asked for before the walk, in definitions too.
        {"own transform", "<circle r='1'/><rect transform='turn(1)'/>", 0},
        {"own transform of blanks", "<rect transform=' '/>", 0},
        {"path data", "<path d='M0 0L1.2.3 4'/>", 0},
        {"path without data", "<path/>", 0},
        {"path that begins with a number", "<path d='1 2'/>", 0},
        {"number behind z", "<path d='M0 0L1 1z 5 5'/>", 0},
        {"points", "<polyline points='0,0 1 2'/>", 0},
        {"polyline without points", "<polyline/>", 0},
        {"polygon without pairs", "<polygon points=''/>", 0},
        {"shape in definitions", "<defs><path d='M'/></defs>", 0},
        {"not finite", "<line x1='1e999'/>", kAnywhere},
        {"largest y", "<line y1='1e999'/>", kAnywhere},
        {"not a number", "<circle cx='nanpx'/>", kAnywhere},
        {"largest y beyond 32 bits", "<line y1='3000000000'/>", kAnywhere},
        {"group in an anchor", "<a><g/></a><circle/>", 0},
        {"group in a group in an anchor", "<g><a><g/></a></g>", 0},
        // What only the walk meets: it ends there.
        {"transform above a shape", "<circle/><g transform='scale(2'><rect/><line/></g>", 4},
        {"far above a shape", "<g transform='x'><g transform='scale(2)'><a><rect/></a></g></g>", 5},
        {"single precision", "<rect width='1e300' rx='1'/>", kAnywhere},
        {"infinite by a transform",
         "<g transform='scale(10)'><g transform='scale(10)'><line x1='1e308'/></g></g>", kAnywhere},
        // No shape asks for these.
        {"transform of an empty group", "<g transform='turn(1)'/><circle/>", kLoads},
        {"transform of another element", "<text transform='turn(1)'/><circle/>", kLoads},
        {"shapes by another name", "<RECT x='1e999'/><Path/><s:path/>", kLoads},
        {"transform in a clip path", "<clipPath transform='x'><rect/></clipPath>", kLoads},
        {"group in definitions", "<defs><g/></defs><pattern><g/></pattern><clipPath><g/></clipPath>", kLoads},
        {"polyline without pairs", "<polyline points=' '/>", kLoads},
        {"lengths that cannot be read", "<rect x='a' y='1.5E' width='3 furlongs' height='-'/>", kLoads},
        {"largest y within 32 bits", "<line y1='2000000000'/>", kLoads},
    };
    const std::string good = imported(kRich);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        import("<svg>" + row.document + "</svg>");
        if (row.nodesLogged == kLoads) {
            EXPECT_EQ(refusal_, "");
            continue;
        }
        EXPECT_EQ(refusal_, (folder_ / "drawing.svg").native() + ": load: 0x80000000 (failed)");
        EXPECT_EQ(scene_->items().size(), 0U);
        int nodes = 0;
        for (const std::string& line : log_) nodes += line.rfind("Parsing node", 0) == 0;
        if (row.nodesLogged != kAnywhere) {
            EXPECT_EQ(nodes, row.nodesLogged);
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
    const auto repeated = [](const std::string& text, size_t times) {
        std::string all;
        for (size_t i = 0; i < times; ++i) all += text;
        return all;
    };
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

// A refused file leaves the items of others in the scene as they were.
TEST_F(Failure, keepsOtherItems) {
    import(kRich);
    const std::string before = everything();
    const auto bad = folder_.write("bad.svg", "<svg><circle/><g transform='x'><rect/></g></svg>");
    EXPECT_THROW(importFile(session_.host, *scene_, bad), OperationError);
    EXPECT_EQ(scene_->items().size(), 1U);
    EXPECT_EQ(everything(), before);
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
