// The saver as a host has it: scenes written by hand, exported through the loaded module, against the
// drawings beside them; and what must fail, how, and with what left behind.
#include <gtest/gtest.h>

#include <QDomDocument>
#include <QStringList>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <vector>

#include "host/ModuleLibrary.h"
#include "host/SceneSaving.h"
#include "host/core/OperationError.h"
#include "host/scenefile/SceneReader.h"
#include "hostsdk/CTzText.h"
#include "hostsdk/ITzSceneSaver.h"
#include "tests/common/Recorder.h"
#include "tests/common/SceneText.h"
#include "tests/common/Table.h"
#include "tests/common/TestFolder.h"

namespace tzhost {
namespace {

// A node with its attributes in the order of their names, a line for each node.
void tell(const QDomNode& node, int level, QString& text) {
    QStringList attributes;
    const QDomNamedNodeMap map = node.attributes();
    for (int i = 0; i < map.size(); ++i) {
        attributes.append(map.item(i).nodeName() + u'=' + map.item(i).nodeValue());
    }
    std::sort(attributes.begin(), attributes.end());
    text += QString(level, u' ') + node.nodeName() + u'[' + attributes.join(u'|') + u']' + node.nodeValue() +
            u'\n';
    for (QDomNode child = node.firstChild(); !child.isNull(); child = child.nextSibling()) {
        tell(child, level + 1, text);
    }
}

// What stands before the document's first comment as it is, then the tree.
std::string told(const std::string& file) {
    QDomDocument document;
    if (!document.setContent(QByteArray::fromStdString(file), false)) return "not well-formed:\n" + file;
    QString tree;
    tell(document, 0, tree);
    return file.substr(0, file.find("<!-- ")) + tree.toStdString();
}

class Saver : public testing::Test {
  protected:
    ScenePtr sceneOf(const std::string& name) {
        ScenePtr scene = session_.host.makeScene();
        readSceneFile(*scene, std::filesystem::path(SCENES_FOLDER) / (name + ".json"));
        return scene;
    }

    // A scene of these items of a scene file.
    ScenePtr made(const std::string& items) {
        ScenePtr scene = session_.host.makeScene();
        readSceneFile(*scene, folder_.write("scene.json", document(items)));
        return scene;
    }

    std::string exported(const ScenePtr& scene, const ExportOptions& options = {}) {
        exportFile(session_.host, *scene, folder_ / "out.svg", options);
        return folder_.read("out.svg");
    }

    // Saves without the host's care for the file: the code, and what the saver leaves.
    TzResult saveDirectly(const ScenePtr& scene, uint32_t flags = 0) {
        const auto saver = session_.host.servers().spawn<ITzSceneSaver>("SVG_SceneSaver");
        return saver->save(tzText((folder_ / "direct.svg").native()), scene.get(), flags);
    }

    TestFolder folder_;
    std::shared_ptr<Recorder> recorder_ = std::make_shared<Recorder>();
    Session session_{TZSVG_MODULE, recorder_};
};

TEST_F(Saver, scenes) {
    for (const char* const name :
         {"planes", "viewbox", "style", "kinds", "subpaths", "zorder", "package", "two-packages"}) {
        const ScenePtr scene = sceneOf(name);
        const std::string file = exported(scene);
        std::ifstream drawing(std::filesystem::path(SCENES_FOLDER) / (std::string(name) + ".svg"));
        EXPECT_EQ(told(file), told({std::istreambuf_iterator<char>(drawing), {}})) << name;
        EXPECT_EQ(exported(scene, {true}), file) << name << ": the preparatory pass changes the output";
    }
}

// The first mesh is flipped about its extent along the plane's vertical axis, wherever it lies.
TEST_F(Saver, flipsTheFirstMesh) {
    struct Row {
        const char* points;
        const char* written;
    };
    for (const Row& row : {Row{"[1,40,9],[2,40,9],[2,47,9]", "1,-33 2,-33 2,-40 "},
                           Row{"[9,1,40],[9,2,40],[9,2,47]", "1,-33 2,-33 2,-40 "},
                           Row{"[40,9,1],[40,9,2],[47,9,2]", "1,-33 2,-33 2,-40 "}}) {
        const ScenePtr scene = made(std::string(R"({"type":"mesh","name":"M","points":[)") + row.points +
                                    R"(],"polygons":[{"type":"LINE","vertices":[0,1,2]}]})");
        EXPECT_NE(exported(scene).find(row.written), std::string::npos) << row.points;
    }
}

// A saver that a host keeps starts every save afresh.
TEST_F(Saver, savesAgain) {
    const auto saver = session_.host.servers().spawn<ITzSceneSaver>("SVG_SceneSaver");
    for (const char* const name : {"subpaths", "package", "viewbox"}) {
        const ScenePtr scene = sceneOf(name);
        const std::string file = exported(scene);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(saver->save(tzText((folder_ / "again.svg").native()), scene.get(), 0), kTzOk) << name;
            EXPECT_EQ(folder_.read("again.svg"), file) << name;
        }
    }
}

// A mesh that cannot be written fails the save only when it is the last; the others are in the file all the
// same.
TEST_F(Saver, lastMeshDecides) {
    const auto scene = [&](const std::vector<std::string>& meshes) {
        std::string items;
        for (const std::string& polygons : meshes) {
            items += items.empty() ? "" : ",";
            items += R"({"type":"mesh","name":"M","points":[[0,0,0],[1,0,0],[1,1,0]],"polygons":[)" +
                     polygons + "]}";
        }
        return made(items);
    };
    const std::string good = R"({"type":"LINE","vertices":[0,1]})";
    const std::string noKind = R"({"type":"LINE","vertices":[0,1],"tags":{"PRIM":""}})";
    const std::string noGroup = R"({"type":"BEZR","vertices":[0],"tags":{"PGRP":"7"}})";
    const std::string noNumber = R"({"type":"LINE","vertices":[0,1],"tags":{"PGRP":"x"}})";
    struct Row {
        std::vector<std::string> meshes;
        TzResult result;
        int polylines;
    };
    const std::string goodBadGood = good + ',' + noGroup + ',' + good;
    const std::string goodBad = good + ',' + noNumber;
    for (const Row& row : std::vector<Row>{
             {{good}, kTzOk, 1},
             {{noKind, good}, kTzOk, 1},
             {{good, noKind}, kTzFailed, 1},
             {{goodBadGood, good}, kTzOk, 2},  // nothing of the mesh behind the bad one
             {{goodBad}, kTzFailed, 1},
         }) {
        EXPECT_EQ(saveDirectly(scene(row.meshes)), row.result) << row.meshes.front();
        QDomDocument document;
        EXPECT_TRUE(document.setContent(QByteArray::fromStdString(folder_.read("direct.svg")), false));
        EXPECT_EQ(document.elementsByTagName(QStringLiteral("polyline")).size(), row.polylines)
            << row.meshes.front();
    }
}

const char* const kTriangle = R"({"type":"mesh","name":"M","packages":["svgloader.package"],"points":[[0,0,0],
    [1,0,0],[1,1,0]],"polygons":[{"type":"LINE","vertices":[0,1,2]}]})";

TEST_F(Saver, storedTexts) {
    const std::string deep = repeated("<g>", 100'000) + repeated("</g>", 100'000);
    auto rows = readTable("export/stored-texts.txt", 3);
    for (const char* const channel : {"svgdefs", "clipdefs", "svgillustratorcdata"})
        rows.push_back({channel, deep, "false"});
    rows.push_back({"svgrootdef", "<svg>" + deep + "</svg>", "false"});
    for (const auto& row : rows) {
        const ScenePtr drawn = made(kTriangle);
        drawn->items()[0]->putChannel(row[0], row[1]);
        const bool good = row[2] == "true";
        EXPECT_EQ(saveDirectly(drawn), good ? kTzOk : kTzFailed) << row[0] << ": " << row[1].substr(0, 60);
        const std::string left = folder_.read("direct.svg");
        if (good) {
            EXPECT_EQ(told(left).rfind("not well-formed", 0), std::string::npos) << left;
        } else {
            EXPECT_EQ(left, "<?xml version=\"1.0\"?>\n") << row[0];
        }
    }
}

// A host that fails one call: what the save answers, and what it leaves.
TEST_F(Saver, failingHost) {
    ServiceGate& gate = session_.host.gate();
    // Fails the first call of an operation.
    const auto codeWithout = [&](const std::string& operation, const std::function<TzResult()>& work) {
        for (uint64_t call = 1;; ++call) {
            gate.failCall(call);
            const TzResult code = work();
            gate.ignoreCalls();
            EXPECT_NE(gate.failedOperation(), "") << operation << " is never called";
            if (gate.failedOperation() == operation || gate.failedOperation().empty()) return code;
        }
    };
    const ScenePtr scene = sceneOf("two-packages");
    for (const uint32_t flags : {0U, kTzSavePreparatoryPass}) {
        EXPECT_EQ(codeWithout("ITzItem::channel", [&] { return saveDirectly(scene, flags); }), kTzFailed);
        EXPECT_EQ(folder_.read("direct.svg"), "<?xml version=\"1.0\"?>\n");
    }
    EXPECT_EQ(codeWithout("ITzMesh::bounds", [&] { return saveDirectly(scene); }), kTzOk);
    const std::string file = folder_.read("direct.svg");
    EXPECT_EQ(file.find("id=\"plain\""), std::string::npos);
    EXPECT_NE(file.find("id=\"of one\""), std::string::npos);

    const auto saver = session_.host.servers().spawn<ITzSceneSaver>("SVG_SceneSaver");
    for (const char* const operation : {"ITzHost::service", "ITzMessages::post"})
        EXPECT_EQ(codeWithout(operation, [&] { return saver->verify(scene.get()); }), kTzOk);
}

// Ends of split paths without starts repeat what came before: the output may not grow with the square.
TEST_F(Saver, endsWithoutStartsAreBounded) {
    ScenePtr scene = session_.host.makeScene();
    ItemData data;
    data.type = kTzItemMesh;
    const TzPoint points[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}};
    const uint32_t vertices[] = {0, 1, 2, 0, 1, 2, 0};
    data.mesh.addPoints(points, 3);
    for (int i = 0; i < 100'000; ++i) {
        data.mesh.setTag(data.mesh.addPolygon(kTzPolygonBezier, vertices, 7), tzTag("SPAT"), "end{1}");
    }
    scene->addItem(std::move(data));
    EXPECT_EQ(saveDirectly(scene), kTzFailed);
    EXPECT_LT(folder_.read("direct.svg").size(), size_t{40} << 20);
}

TEST_F(Saver, messagesAndArguments) {
    const ScenePtr scene = sceneOf("kinds");
    exported(scene);
    EXPECT_EQ(recorder_->messages, std::vector<std::string>{"SVG sub-paths are output as individual paths."});

    const auto saver = session_.host.servers().spawn<ITzSceneSaver>("SVG_SceneSaver");
    EXPECT_EQ(saver->verify(nullptr), kTzInvalidArgument);
    EXPECT_EQ(saver->save(tzText("x"), nullptr, 0), kTzInvalidArgument);
    EXPECT_EQ(saver->save(tzText("x"), scene.get(), 2), kTzInvalidArgument);
    EXPECT_EQ(saver->save(tzText("/nowhere/at/all"), scene.get(), 0), kTzFailed);
}

}  // namespace
}  // namespace tzhost
