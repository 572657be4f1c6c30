// The way through a document: which elements become polygons, in which order and with which drawing index,
// what the log and the monitor are told, and what the item holds in the end.
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzSceneLoader.h"
#include "tests/loader/LoaderFixture.h"

namespace tzhost {
namespace {

std::string parsing(const std::string& name, int line = 1) {
    return "Parsing node of type " + name + ", line number " + std::to_string(line) + ".\n";
}
const std::string kParsed = "Node parsed\n";

// Counts what it is told; cancels when asked to.
class CountingMonitor : public ITzMonitor {
  public:
    TzResult initialise(uint64_t stepCount) noexcept override {
        ++initialised;
        announced = stepCount;
        return kTzOk;
    }
    TzResult step(uint32_t count) noexcept override {
        steps += count;
        return kTzOk;
    }
    uint64_t initialised = 0;
    uint64_t announced = 0;
    uint64_t steps = 0;

  protected:
    ~CountingMonitor() = default;
};

class Loader : public LoaderTest {};

TEST_F(Loader, drawingIndices) {
    const struct {
        const char* document;
        const char* indices;
    } rows[] = {
        {"<rect/><rect/><circle/>", "0 0 0"},
        {"<circle/><rect/><line/>", "0 1 1"},  // a rectangle passes its index on
        {"<ellipse/><line/><polygon points='1,1'/><polyline points='1,1'/><path d='M1 1'/><rect/>",
         "0 1 2 3 4 5"},
        {"<path d='M0 0L1 1M2 2L3 3'/><path d='M0 0M1 1M2 2L3 3'/><rect/>", "0 0 1 2"},
        {"<circle/>text<!-- c --><?p?><text>t</text><defs/><circle/>", "0 1"},
        {"<rect/><g><circle/><line/></g><polyline points='1,1'/>", "0 0 1 1"},
        {"<g/><g><g/><g><circle/></g><circle/></g><circle/>", "0 2 2"},
        {"<circle/><a><circle/><rect/></a><circle/>", "0 0 1 1"},
        {"<circle><line/><line/></circle><line/>", "0 0 1 1"},
        // These count, and make no polygon; the one before keeps its own.
        {"<circle/><path d=''/><polyline points=''/><circle/>", "0 3"},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(imports("<svg>" + std::string(row.document) + "</svg>")) << row.document << refusal_;
        EXPECT_EQ(tags("ZORD"), row.indices) << row.document;
    }
}

// Polygons by the id of their element, and the drawing indices that tell where the walk took it to stand.
TEST_F(Loader, walk) {
    const struct {
        const char* document;
        const char* ids;
        const char* indices;
    } rows[] = {
        {"<svg><g><line id='a'/><g><line id='b'/></g></g><line id='c'/></svg>", "a b c", "0 0 1"},
        {"<svg><line id='a'><line id='b'/></line><line id='c'/></svg>", "a b c", "0 0 1"},
        // Parts that the scene cannot show; others that only hold shapes.
        {"<svg><defs><line id='a'/></defs><clipPath><g><line id='b'/></g></clipPath><pattern><a><line/></a>"
         "</pattern><symbol><line id='c'/></symbol><mask><line id='d'/></mask></svg>",
         "c d", "0 0"},
        // Every alternative of every switch stands where the switch stood.
        {"<svg><switch><line id='a'/><rect id='b'/><line id='c'/></switch></svg>", "a b c", "0 1 1"},
        {"<svg><line id='a'/><switch/><g><switch><line id='b'/><switch><g><switch><line id='c'/></switch></g>"
         "</switch></switch></g><line id='d'/></svg>",
         "a b c d", "0 0 0 2"},
        {"<svg><defs><switch><line id='a'/></switch></defs><line id='b'/></svg>", "b", "0"},
        // The walk starts at the last node of the document.
        {"<?xml version='1.0'?><!DOCTYPE svg><!-- c --><svg><line id='a'/></svg>", "a", "0"},
        {"<svg><line id='a'/></svg><!-- c -->", "", ""},
        {"<svg><line id='a'/></svg><?p?>", "", ""},
        {"<a><line id='a'/><svg><line id='b'/></svg></a>", "a b", "0 0"},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(imports(row.document)) << row.document << refusal_;
        EXPECT_EQ(tags("ELID"), row.ids) << row.document;
        EXPECT_EQ(tags("ZORD"), row.indices) << row.document;
    }
    import("<svg viewBox='1' id='r'/><!-- c -->");
    EXPECT_EQ(itemTag("VBOX"), "1");
    EXPECT_EQ(channel("svgrootdef"), "<svg id=\"r\"/>\n");
}

TEST_F(Loader, logLines) {
    ASSERT_TRUE(
        imports("<?xml version='1.0'?>\n<svg>\n <g>\n  <circle/>t</g>\n<defs>\n<rect/></defs><!-- c -->"
                "<?p?>\n<switch>\n<b><line/></b></switch>\n</svg>"));
    EXPECT_EQ(log_, (std::vector<std::string>{
                        parsing("svg"), kParsed, parsing("g"), kParsed, parsing("circle"), kParsed,
                        parsing("#text"), kParsed, parsing("defs"), kParsed, parsing("#comment"), kParsed,
                        parsing("p"), kParsed, parsing("b", -1), kParsed, parsing("line", -1), kParsed}));
    for (const std::string& heading : recorder_->headings) EXPECT_EQ(heading, "load/save");
    for (const LogEntry& entry : recorder_->entries) {
        EXPECT_EQ(entry.formatName + '/' + entry.version + '/' + entry.description + '/' + entry.subsystem,
                  "SVG IO/0.01a//");
    }
}

// A line takes 1023 bytes at most, of whole characters; the next one stands by itself.
TEST_F(Loader, longLogLines) {
    const auto repeated = [](const std::string& text, int count) {
        std::string all;
        for (int i = 0; i < count; ++i) all += text;
        return all;
    };
    const struct {
        std::string name;
        std::string line;
    } rows[] = {
        {repeated("x", 985), parsing(repeated("x", 985))},  // 1023 bytes
        {repeated("x", 987), parsing(repeated("x", 987)).substr(0, 1023) + '\n'},
        {repeated("x", 2000), "Parsing node of type " + repeated("x", 1002) + '\n'},
        {repeated("\xC3\xA9", 600), "Parsing node of type " + repeated("\xC3\xA9", 501) + '\n'},
        {'x' + repeated("\xC3\xA9", 600), "Parsing node of type x" + repeated("\xC3\xA9", 500) + '\n'},
        {"xx" + repeated("\xE6\x97\xA5", 400),
         "Parsing node of type xx" + repeated("\xE6\x97\xA5", 333) + '\n'},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(imports("<svg><" + row.name + "/></svg>")) << row.name << refusal_;
        EXPECT_EQ(log_, (std::vector<std::string>{parsing("svg"), kParsed, row.line, kParsed}));
    }
}

TEST_F(Loader, cancel) {
    const std::string document = "<svg><circle/><rect/></svg>";
    const std::vector<std::string> whole = {parsing("svg"), kParsed,         parsing("circle"),
                                            kParsed,        parsing("rect"), kParsed};
    for (size_t step = 1; step <= 3; ++step) {
        import(document, {step});
        EXPECT_EQ(code_, kTzCancelled) << step;
        std::vector<std::string> expected(whole.begin(), whole.begin() + 2 * static_cast<ptrdiff_t>(step));
        expected.emplace_back("User aborted\n");
        EXPECT_EQ(log_, expected);
    }
    import(document, {4});
    EXPECT_EQ(refusal_, "");
    EXPECT_EQ(log_, whole);
    // A node that failed is a step like any other.
    import("<svg transform='x'><circle/></svg>", {2});
    EXPECT_EQ(log_.back(), "User aborted\n");
}

TEST_F(Loader, monitor) {
    const struct {
        const char* document;
        uint64_t announced;  // all nodes, before switches are taken apart
        uint64_t steps;      // what the walk visits
    } rows[] = {
        {"<svg/>", 1, 1},
        {"<svg>t<g><rect a='1'/></g><!--c--></svg>", 5, 5},
        {"<?xml version='1.0'?><!--c--><svg/>", 3, 1},
        {"<svg><defs><g><rect/></g></defs></svg>", 4, 2},
        {"<svg><switch><rect/><rect/></switch></svg>", 4, 3},
        {"<svg><rect/></svg><!--c-->", 3, 1},
    };
    const auto loader = session_.host.servers().spawn<ITzSceneLoader>("SVG_SceneLoader");
    for (const auto& row : rows) {
        const auto monitor = CTzPolymorph<CountingMonitor, ITzMonitor>::createSelf();
        const ScenePtr scene = session_.host.makeScene();
        ASSERT_EQ(loader->recognise(tzText(folder_.write("drawing.svg", row.document).native())), kTzOk);
        ASSERT_EQ(loader->start(scene.get()), kTzOk);
        ASSERT_EQ(loader->load(monitor.get()), kTzOk);
        EXPECT_EQ(monitor->initialised, 1U) << row.document;
        EXPECT_EQ(monitor->announced, row.announced) << row.document;
        EXPECT_EQ(monitor->steps, row.steps) << row.document;
    }
}

TEST_F(Loader, item) {
    const struct {
        const char* root;
        const char* tags;  // in the order of their creation
    } rows[] = {
        {"<svg viewBox=' 0,0 10  5'/>", "VCMP= 0,0 10  5 VBOX= 0,0 10  5 "},
        {"<svg/>", "VCMP=1 "},
        {"<svg viewBox=''/>", "VCMP=1 "},
    };
    for (const auto& row : rows) {
        ASSERT_EQ(import(row.root).size(), 1U);
        std::string tags;
        for (const ItemTag& entry : item().tags) tags += tagName(entry.id) + '=' + entry.text + ' ';
        EXPECT_EQ(tags, row.tags);
        EXPECT_EQ(item().name, "drawing");
        EXPECT_EQ(item().type, "mesh");
        ASSERT_EQ(item().packages.size(), 1U);
        EXPECT_EQ(item().packages[0].name, "svgloader.package");
        EXPECT_TRUE(item().packages[0].instance);
        EXPECT_EQ(mesh().pointCount(), 0U);
    }
}

TEST_F(Loader, channels) {
    ASSERT_TRUE(
        imports("<!DOCTYPE svg PUBLIC 'P' 'S'><svg id='r' x='1' y='2' width='3' height='4' viewBox='5'>"
                "<radialGradient id='a'/><linearGradient id='b&#xA;'/>\n<pattern id='c'/>"
                "<defs><d/><pattern id='e'/><clipPath id='f'/>\r\n</defs><clipPath id='h'><g/></clipPath>"
                "<g transform='scale(1)' id='i'><g/></g><g transform='scale(1)'/>"
                "<i:pgf id='adobe_illustrator_pgf'>x</i:pgf><i:pgf id='other'/></svg>"));
    const std::pair<const char*, const char*> expected[] = {
        {"svgdefs",
         "<d/><pattern id=\"e\"/><clipPath id=\"f\"/><pattern id=\"c\"/><linearGradient id=\"b\"/>"
         "<radialGradient id=\"a\"/>"},
        {"clipdefs", "<clipPath id=\"f\"/><clipPath id=\"h\"><g/></clipPath>"},
        {"groupdefs",
         "g=id{2}parent{root}attributes{id=\"i\"};g=id{3}parent{2};g=id{4}parent{root}attributes{};"},
        {"svgdoctype", "<!DOCTYPE svg PUBLIC \"P\" \"S\">\n"},
        {"svgrootdef", "<svg id=\"r\"/>\n"},
        {"svgillustratorcdata", "<i:pgf id=\"adobe_illustrator_pgf\">x</i:pgf>\n"},
    };
    ASSERT_EQ(item().channels.size(), std::size(expected));
    for (size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(item().channels[i].name, expected[i].first);
        EXPECT_EQ(item().channels[i].text, expected[i].second);
    }
    import("<svg/>");
    for (const Channel& entry : item().channels)
        EXPECT_EQ(entry.text, entry.name == "svgrootdef" ? "<svg/>\n" : "") << entry.name;
}

TEST_F(Loader, servers) {
    using Tags = std::vector<std::pair<std::string, std::string>>;
    const struct {
        const char* name;
        Tags tags;
    } rows[] = {
        {"SVG_SceneLoader",
         {{"loader.classList", "scene2"},
          {"loader.dosPattern", "*.svg"},
          {"server.username", "Scalable Vector Graphics"}}},
        {"SVG_SceneSaver",
         {{"saver.outClass", "scene2"},
          {"saver.dosType", "svg"},
          {"server.username", "SVG: Scalable Vector Graphics"}}},
        {"SVG_ImageLoader",
         {{"loader.classList", "image"},
          {"loader.dosPattern", "*.svg"},
          {"loader.threadsafe", "Yes"},
          {"server.username", "Scalable Vector Graphics"},
          {"server.logsubsystem", "io-status"}}},
        {"svgloader.package", {}},
    };
    const std::vector<Server> servers = session_.host.servers().servers();
    ASSERT_EQ(servers.size(), std::size(rows));
    for (size_t i = 0; i < servers.size(); ++i) {
        EXPECT_EQ(servers[i].name, rows[i].name);
        const ServerDescription description = describe(servers[i]);
        EXPECT_EQ(description.tags, rows[i].tags) << rows[i].name;
        // Interfaces and tags beyond the end: nothing is written.
        std::string name = "untouched";
        std::string value = "untouched";
        const auto count = static_cast<uint32_t>(description.interfaces.size());
        EXPECT_EQ(servers[i].factory->interfaceAt(count, tzSinkTo(name)), kTzOutOfBounds);
        void* out = nullptr;
        const TzResult hasTags = servers[i].factory->query(ITzServerTags::kId, &out);
        EXPECT_EQ(hasTags, rows[i].tags.empty() ? kTzNoInterface : kTzOk) << rows[i].name;
        if (out) {
            const auto tags = CTzPtr<ITzServerTags>::adopt(static_cast<ITzServerTags*>(out));
            for (const uint32_t beyond : {static_cast<uint32_t>(rows[i].tags.size()), 0xFFFFFFFFU})
                EXPECT_EQ(tags->tagAt(beyond, tzSinkTo(name), tzSinkTo(value)), kTzOutOfBounds);
        }
        EXPECT_EQ(name + value, "untoucheduntouched");
        // What a server does not offer is not handed out, and no object is made for it.
        EXPECT_EQ(servers[i].factory->spawn("tz.nothing/1", &out), kTzNoInterface);
        EXPECT_EQ(out, nullptr);
    }
    EXPECT_EQ(describe(servers[0]).interfaces,
              (std::vector<std::string>{ITzSceneLoader::kId, ITzServerTags::kId}));
}

}  // namespace
}  // namespace tzhost
