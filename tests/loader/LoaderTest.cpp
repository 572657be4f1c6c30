// Whole documents through the loaded module: recognition, the walk with its log and monitor, tags and
// channels.
#include <pthread.h>

#include <functional>

#include "hostsdk/ITzSceneLoader.h"
#include "tests/loader/LoaderFixture.h"

namespace tzhost {
namespace {

using Loader = LoaderTest;

TEST_F(Loader, recognition) {
    const auto nested = [](int levels) {
        std::string text;
        for (int i = 1; i < levels; ++i) text += "<g>";
        for (int i = 1; i < levels; ++i) text += "</g>";
        return "<svg>" + text + "</svg>";
    };
    EXPECT_TRUE(imports("<svg/>"));
    EXPECT_TRUE(imports("<a><svg/></a>"));
    EXPECT_TRUE(imports(nested(256)));
    for (const std::string& refused :
         {std::string(), std::string("text"), std::string("<html/>"), std::string("<svg><rect</svg>"),
          std::string("<svg><svg/></svg>"), std::string("<a><svg/><svg/></a>"), nested(257)}) {
        EXPECT_FALSE(imports(refused)) << refused.substr(0, 40);
        EXPECT_NE(refusal_.find("0x80000005"), std::string::npos) << refusal_;
        EXPECT_TRUE(log_.empty()) << "no message is written";
    }
}

TEST_F(Loader, joinsLines) {
    ASSERT_TRUE(imports("<svg>\r\n<path id='a\nb' d='M0 0 L1\n0 0'/>\n</svg>"));
    EXPECT_EQ(tag(0, "ELID"), "ab");
    EXPECT_EQ(vertices(0), "0,0 3.33333,0 6.66667,0 10,0") << "L1 and 0 became L10";
}

TEST_F(Loader, drawingIndices) {
    struct Row {
        const char* shapes;
        const char* indices;
    };
    const Row rows[] = {
        {"<rect/><rect/><circle/>", "0 0 0"},
        {"<circle/><rect/><line/>", "0 1 1"},
        {"<line/><polygon points='0,0'/><polyline points='0,0'/><path d='M0 0'/><ellipse/><line/>",
         "0 1 2 3 4 5"},
        {"<g/><text/><line/><g><line/><line/></g><line/>", "1 0 1 3"},
        {"<a><line/><a><line/></a></a><!--c--><line/>", "0 0 0"},
        {"<defs><line/></defs><clipPath><line/></clipPath><pattern><line/></pattern><RECT/><line/>", "0"},
        {"<switch><line/><switch><rect/><line/></switch></switch><line/>", "0 1 1 2"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.shapes);
        ASSERT_TRUE(imports(std::string("<svg>") + row.shapes + "</svg>"));
        EXPECT_EQ(tags("ZORD"), row.indices);
    }
    ASSERT_TRUE(imports("<svg viewBox='0 0 1 1'><line/></svg><!-- after the root -->"));
    EXPECT_EQ(mesh().polygonCount(), 0U) << "the walk starts at the last node of the document";
    EXPECT_EQ(itemTag("VBOX"), "0 0 1 1");
}

TEST_F(Loader, logLines) {
    ASSERT_TRUE(imports("<svg><switch><rect/></switch>t</svg>"));
    EXPECT_EQ(log_,
              (std::vector<std::string>{"Parsing node of type svg, line number 1.\n", "Node parsed\n",
                                        "Parsing node of type rect, line number -1.\n", "Node parsed\n",
                                        "Parsing node of type #text, line number 1.\n", "Node parsed\n"}));
    std::string name = "x";
    for (int i = 0; i < 600; ++i) name += "\xc3\xa9";
    ASSERT_TRUE(imports("<svg><" + name + "/></svg>"));
    ASSERT_EQ(log_.size(), 4U);
    EXPECT_EQ(log_[2], ("Parsing node of type " + name).substr(0, 1022) + "\n") << "cut between characters";
}

TEST_F(Loader, cancel) {
    ImportOptions options;
    options.cancelAfter = 2;
    EXPECT_TRUE(import("<svg><rect/><rect/></svg>", options).empty());
    EXPECT_EQ(log_.size(), 5U);
    EXPECT_EQ(log_.back(), "User aborted\n");
    EXPECT_TRUE(imports("<svg><rect/></svg>")) << "and the next load works";
}

TEST_F(Loader, itemAndChannels) {
    ASSERT_TRUE(
        imports("<!DOCTYPE svg PUBLIC 'p' 's'><svg id='r' width='9' viewBox='1 2 3 4'><defs><a>\n</a></defs>"
                "<clipPath/><g id='x'/><i:pgf id='adobe_illustrator_pgf'/></svg>"));
    EXPECT_EQ(item().name, "drawing");
    EXPECT_EQ(item().packages.at(0).name, "svgloader.package");
    ASSERT_EQ(item().channels.size(), 6U);
    EXPECT_EQ(channel("svgdefs"), "<a/>");
    EXPECT_EQ(channel("clipdefs"), "<clipPath/>");
    EXPECT_EQ(channel("groupdefs"), "g=id{1}parent{root}attributes{id=\"x\"};");
    EXPECT_EQ(channel("svgdoctype"), "<!DOCTYPE svg PUBLIC \"p\" \"s\">\n");
    EXPECT_EQ(channel("svgrootdef"), "<svg id=\"r\"/>\n");
    EXPECT_EQ(channel("svgillustratorcdata"), "<i:pgf id=\"adobe_illustrator_pgf\"/>\n");
    EXPECT_EQ(itemTag("VBOX"), "1 2 3 4");
    EXPECT_EQ(itemTag("VCMP"), "1 2 3 4");
    ASSERT_TRUE(imports("<svg/>"));
    EXPECT_EQ(itemTag("VBOX"), "-");
    EXPECT_EQ(itemTag("VCMP"), "1");
    EXPECT_EQ(channel("groupdefs"), "") << "nothing of the load before";
    EXPECT_FALSE(imports("<svg><a><g/></a></svg>")) << "a group under another kind of element";
}

// The tags of a polygon, in the order of their creation.
TEST_F(Loader, tagChain) {
    ASSERT_TRUE(
        imports("<svg><g id='a'><g id='b'><rect id='\xc3\xa9' transform='scale(2)' stroke='green' opacity=''"
                " style='FILL:red;stroke-width:2; stroke:blue' fill='blue' clip-path='url(#c)'"
                " fill-rule='nonzero'/></g></g></svg>"));
    std::string all;
    for (TagReader tags(mesh().polygon(0).tags); tags.next();) {
        for (int shift = 24; shift >= 0; shift -= 8) all += static_cast<char>(tags.id() >> shift);
        all += "=" + std::string(tags.text()) + "|";
    }
    EXPECT_EQ(
        all,
        "FILL=red|FILR=nonzero|STYL=FILL:red;stroke-width:2; stroke:blue|LWID=2|LCOL=green|CPAT=url(#c)|"
        "PRIM=RECT{X:0,Y:0,HEIGHT:0,WIDTH:0}|VCMP=1|PGRP=2|VGRP=b|GSVG=a;b|PICK=a;b|ELID=\xc3\xa9|"
        "TRAN=scale(2)|ZORD=0|");
    ASSERT_TRUE(imports("<svg><line/></svg>"));
    EXPECT_EQ(tags("FILL") + tags("PGRP") + tags("ELID") + tags("TRAN") + tags("STYL"), "-----");
}

// The operations of the interface, as a host may call them.
TEST_F(Loader, callsOutOfOrderAndInTurn) {
    const auto spawn = [&] { return session_.host.servers().spawn<ITzSceneLoader>("SVG_SceneLoader"); };
    const auto a = spawn();
    const auto b = spawn();
    const ScenePtr scene = session_.host.makeScene();
    EXPECT_EQ(a->load(nullptr), kTzNotReady);
    EXPECT_EQ(a->start(scene.get()), kTzNotReady);
    EXPECT_EQ(a->recognise(tzText("missing.svg")), kTzNotRecognised);

    const std::string first = folder_.write("a.svg", "<svg><g><line/></g><path d='M0 0 M1 1'/></svg>");
    const std::string second =
        folder_.write("b.svg", "<svg width='50' height='50'><g/><g><line x2='50%'/></g></svg>");
    ASSERT_EQ(a->recognise(tzText(first)), kTzOk);
    ASSERT_EQ(b->recognise(tzText(second)), kTzOk);
    ASSERT_EQ(a->start(scene.get()), kTzOk);
    ASSERT_EQ(b->start(scene.get()), kTzOk);
    ASSERT_EQ(b->load(nullptr), kTzOk);
    ASSERT_EQ(a->load(nullptr), kTzOk);
    EXPECT_EQ(a->load(nullptr), kTzNotReady) << "a document is loaded once";
    const auto groupOf = [&](size_t item) {
        return std::string(*findTag(scene->items().at(item)->data().mesh.polygon(0).tags, tzTag("PGRP")));
    };
    EXPECT_EQ(groupOf(0), "1");
    EXPECT_EQ(groupOf(1), "2");

    ASSERT_EQ(a->recognise(tzText(second)), kTzOk);
    ASSERT_EQ(a->reset(), kTzOk);
    EXPECT_EQ(a->start(scene.get()), kTzNotReady) << "reset forgets the file";
}

// A walk that recursed would need a deep call stack for as many siblings; a host's thread may have little.
TEST_F(Loader, manySiblingsOnASmallStack) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int kSiblings = 20000;
#else
    constexpr int kSiblings = 200000;
#endif
    std::string document = "<svg>";
    for (int i = 0; i < kSiblings; ++i) document += "<line/>";
    document += "</svg>";
    uint32_t polygons = 0;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 512 * 1024);
    const auto run = [&] {
        Session session{TZSVG_MODULE};  // its thread is this one
        const ScenePtr scene = session.host.makeScene();
        polygons = static_cast<uint32_t>(
            importFile(session.host, *scene, folder_.write("many.svg", document)).polygons);
    };
    pthread_t thread{};
    auto work = std::function<void()>(run);
    const auto start = [](void* context) -> void* {
        (*static_cast<std::function<void()>*>(context))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, start, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(polygons, static_cast<uint32_t>(kSiblings));
}

TEST_F(Loader, servers) {
    std::string listed;
    for (const auto& server : session_.host.servers().servers()) listed += server.name + " ";
    EXPECT_EQ(listed, "SVG_SceneLoader SVG_SceneSaver SVG_ImageLoader svgloader.package ");
}

}  // namespace
}  // namespace tzhost
