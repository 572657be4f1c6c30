// The way through a document: which elements become polygons, in which order and with which drawing index,
// what the log and the monitor are told, and what the item holds in the end.
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzPackage.h"
#include "hostsdk/ITzSceneLoader.h"
#include "tests/common/Table.h"
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
    for (const auto& row : readTable("loader/drawing-indices.txt", 2)) {
        ASSERT_TRUE(imports("<svg>" + row[0] + "</svg>")) << row[0] << refusal_;
        EXPECT_EQ(tags("ZORD"), row[1]) << row[0];
    }
}

TEST_F(Loader, walk) {
    for (const auto& row : readTable("loader/walk.txt", 3)) {
        ASSERT_TRUE(imports(row[0])) << row[0] << refusal_;
        EXPECT_EQ(tags("ELID"), row[1]) << row[0];
        EXPECT_EQ(tags("ZORD"), row[2]) << row[0];
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
    const struct {
        std::string name;
        std::string line;
    } rows[] = {
        {repeated("x", 985), parsing(repeated("x", 985))},  // 1023 bytes
        {repeated("x", 2000), "Parsing node of type " + repeated("x", 1002) + '\n'},
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
    const auto loader = session_.host.servers().spawn<ITzSceneLoader>("SVG_SceneLoader");
    for (const auto& row : readTable("loader/monitor.txt", 3)) {
        const auto monitor = CTzPolymorph<CountingMonitor, ITzMonitor>::createSelf();
        const ScenePtr scene = session_.host.makeScene();
        ASSERT_EQ(loader->recognise(tzText(folder_.write("drawing.svg", row[0]).native())), kTzOk);
        ASSERT_EQ(loader->start(scene.get()), kTzOk);
        ASSERT_EQ(loader->load(monitor.get()), kTzOk);
        EXPECT_EQ(monitor->initialised, 1U) << row[0];
        EXPECT_EQ(monitor->announced, std::stoull(row[1])) << row[0];
        EXPECT_EQ(monitor->steps, std::stoull(row[2])) << row[0];
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
    std::string told;
    for (const Server& server : session_.host.servers().servers()) {
        const ServerDescription description = describe(server);
        told += server.name + ':';
        for (const std::string& name : description.interfaces) told += ' ' + name;
        for (const auto& [name, value] : description.tags) told += "\n  " + name + '=' + value;
        told += '\n';
        void* out = nullptr;
        EXPECT_EQ(server.factory->spawn("tz.nothing/1", &out), kTzNoInterface);
    }
    EXPECT_EQ(told,
              "SVG_SceneLoader: tz.sceneLoader/1 tz.server.tags/1\n"
              "  loader.classList=scene2\n"
              "  loader.dosPattern=*.svg\n"
              "  server.username=Scalable Vector Graphics\n"
              "SVG_SceneSaver: tz.sceneSaver/1 tz.server.tags/1\n"
              "  saver.outClass=scene2\n"
              "  saver.dosType=svg\n"
              "  server.username=SVG: Scalable Vector Graphics\n"
              "SVG_ImageLoader: tz.imageLoader/1 tz.server.tags/1\n"
              "  loader.classList=image\n"
              "  loader.dosPattern=*.svg\n"
              "  loader.threadsafe=Yes\n"
              "  server.username=Scalable Vector Graphics\n"
              "  server.logsubsystem=io-status\n"
              "svgloader.package: tz.package/1 tz.packageInstances/1\n");
    const auto package = session_.host.servers().spawn<ITzPackage>("svgloader.package");
    EXPECT_EQ(package->channelAt(6, tzSinkTo(told), tzSinkTo(told)), kTzOutOfBounds);
}

}  // namespace
}  // namespace tzhost
