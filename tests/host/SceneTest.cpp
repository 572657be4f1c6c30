// Scenes, items and meshes through their interfaces: result codes, order, threads.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <thread>

#include "host/Host.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser.h"
#include "hostsdk/ITzPackage.h"

using namespace tzhost;

namespace {

class SceneTest : public ::testing::Test {
  protected:
    ITzItem* item() const { return scene_->items()[0].get(); }
    ITzMesh* mesh() const { return mesh_.get(); }

    std::string read(const std::function<TzResult(TzTextSink)>& operation) {
        std::string text;
        const TzResult result = operation(tzSinkTo(text));
        return tzFailed(result) ? tzResultText(result) : text;
    }

    Host host_;
    ScenePtr scene_ = host_.makeScene();
    uint32_t index_ = 0;
    CTzPtr<ITzMesh> mesh_ =
        CTzUser_Scene(scene_.query<ITzScene>()).createItem(kTzItemMesh, index_).mesh().pointer();
};

TEST_F(SceneTest, RefusesWhatCannotBe) {
    const TzPoint good{1, 2, 3};
    const TzPoint bad[] = {{0, 0, 0}, {0, NAN, 0}};
    const uint32_t vertices[] = {0, 1};
    TzPoint twoPoints[2];
    const std::string broken = "a\xC3";
    uint32_t out = 0;
    ITzItem* made = nullptr;
    const TzText text = tzText("x");
    const TzText notUtf8 = tzText(broken);
    std::string read;
    ASSERT_EQ(kTzOk, mesh()->addPoints(&good, 1, &out));
    ASSERT_EQ(kTzOk, mesh()->addPolygon(kTzPolygonLine, vertices, 1, &out));

    struct Row {
        const char* what;
        TzResult expected;
        TzResult actual;
    };
    const Row rows[] = {
        {"a coordinate that is no number", kTzInvalidArgument, mesh()->addPoints(bad, 2, &out)},
        {"a vertex without point", kTzOutOfBounds, mesh()->addPolygon(kTzPolygonLine, vertices, 2, &out)},
        {"a type that is not ASCII", kTzInvalidArgument, mesh()->addPolygon(0xE4424344U, vertices, 1, &out)},
        {"a tag on no polygon", kTzOutOfBounds, mesh()->setPolygonTag(1, tzTag("FILL"), text)},
        {"a tag text that is not UTF-8", kTzInvalidArgument,
         mesh()->setPolygonTag(0, tzTag("FILL"), notUtf8)},
        {"a tag that is not set", kTzNotFound, mesh()->polygonTag(0, tzTag("FILL"), tzSinkTo(read))},
        {"a tag of no polygon", kTzOutOfBounds, mesh()->polygonTag(1, tzTag("FILL"), tzSinkTo(read))},
        {"points beyond the end", kTzOutOfBounds, mesh()->points(0, 2, twoPoints)},
        {"vertices beyond the end", kTzOutOfBounds, mesh()->vertices(0, 1, 1, &out)},
        {"an item tag text that is not UTF-8", kTzInvalidArgument, item()->setTag(tzTag("VBOX"), notUtf8)},
        {"an item tag that is not set", kTzNotFound, item()->tag(tzTag("VBOX"), tzSinkTo(read))},
        {"a package that nobody serves", kTzNotFound, item()->addPackage(text)},
        {"a channel of no package", kTzNotFound, item()->setChannel(text, text)},
        {"an item beyond the last", kTzOutOfBounds, scene_->itemAt(1, &made)},
        {"an item type that is empty", kTzInvalidArgument, scene_->createItem(tzText(""), &out, &made)},
    };
    for (const Row& row : rows) EXPECT_EQ(row.expected, row.actual) << row.what;

    // Nothing of what was refused has been added.
    const ItemData& data = scene_->items()[0]->data();
    EXPECT_EQ(1U, scene_->items().size());
    EXPECT_EQ(1U, data.mesh.pointCount());
    EXPECT_EQ(1U, data.mesh.polygonCount());
    EXPECT_EQ(0U, data.mesh.polygon(0).tags.size);
    EXPECT_TRUE(data.tags.empty());
}

TEST_F(SceneTest, ReplacedTagsKeepTheirPlace) {
    for (const char* text : {"0 0 1 1", "", "0 0 20 10"}) item()->setTag(tzTag("VBOX"), tzText(text));
    item()->setTag(tzTag("VCMP"), tzText("1"));
    item()->setTag(tzTag("VBOX"), tzText("changed"));
    const std::vector<ItemTag>& tags = scene_->items()[0]->data().tags;
    ASSERT_EQ(2U, tags.size());
    EXPECT_EQ(tzTag("VBOX"), tags[0].id);
    EXPECT_EQ("changed", read([&](TzTextSink sink) { return item()->tag(tzTag("VBOX"), sink); }));
    EXPECT_EQ("1", read([&](TzTextSink sink) { return item()->tag(tzTag("VCMP"), sink); }));
}

// A package of two channels, the second one's type as told.
class TwoChannels : public ITzPackage {
  public:
    explicit TwoChannels(const CTzPtr<ITzHost>& /*host*/) {}
    TzResult channelCount(uint32_t* count) noexcept override {
        *count = 2;
        return kTzOk;
    }
    TzResult channelAt(uint32_t index, TzTextSink name, TzTextSink type) noexcept override {
        return tzGate([&] {
            tzWrite(name, index == 0 ? "first" : "second");
            tzWrite(type, index == 0 ? kTzChannelString : secondType);
        });
    }
    static inline const char* secondType = "float";
};

TEST_F(SceneTest, TakesAPackageOnceAndOfTextChannelsOnly) {
    const auto host = CTzPtr<ITzHost>::share(host_.object());
    const auto factory = CTzPolymorph<TwoChannels, ITzPackage>::factory(host, nullptr);
    const auto registry = CTzUser_Host(host).service<ITzServerRegistry>();
    for (const char* const name : {"one", "other"})
        ASSERT_EQ(kTzOk, registry->addServer(tzText(name), factory.get()));
    const auto first = [&] {
        return read([&](TzTextSink sink) { return item()->channel(tzText("first"), sink); });
    };

    EXPECT_EQ(kTzNotSupported, item()->addPackage(tzText("one")));
    EXPECT_EQ(kTzNotFound, item()->setChannel(tzText("first"), tzText("x"))) << "half of it was kept";
    TwoChannels::secondType = kTzChannelString;
    EXPECT_EQ(kTzOk, item()->addPackage(tzText("one")));
    EXPECT_EQ(kTzOk, item()->setChannel(tzText("first"), tzText("kept")));
    EXPECT_EQ(kTzExists, item()->addPackage(tzText("one")));
    EXPECT_EQ(kTzOk, item()->addPackage(tzText("other"))) << "two packages may share channels";
    EXPECT_EQ("kept", first());
    EXPECT_EQ(2U, scene_->items()[0]->data().packages.size());
    EXPECT_EQ(2U, scene_->items()[0]->data().channels.size());
}

TEST_F(SceneTest, NamesItemsAfterTheirTypeOrTheFile) {
    uint32_t index = 0;
    ITzItem* made = nullptr;
    scene_->setNameHint("dra\xFFwing");
    ASSERT_EQ(kTzOk, scene_->createItem(tzText("camera"), &index, &made));
    const auto named = CTzPtr<ITzItem>::adopt(made);
    EXPECT_EQ(1U, index);
    EXPECT_EQ("Mesh", read([&](TzTextSink sink) { return item()->name(sink); }));
    EXPECT_EQ("dra\xEF\xBF\xBDwing", read([&](TzTextSink sink) { return named->name(sink); }));
    EXPECT_FALSE(named.query<ITzMesh>());
}

// More than one chunk of the arrays that hold them.
TEST_F(SceneTest, ReadsRangesBackAcrossChunks) {
    constexpr uint32_t kCount = 50'000;
    std::vector<TzPoint> points(kCount);
    std::vector<uint32_t> vertices(kCount);
    for (uint32_t i = 0; i < kCount; ++i) {
        points[i] = {i * 0.5, -1.0 * i, 7.0};
        vertices[i] = kCount - 1 - i;
    }
    uint32_t first = 1;
    ASSERT_EQ(kTzOk, mesh()->addPoints(points.data(), kCount, &first));
    EXPECT_EQ(0U, first);
    uint32_t polygon = 1;
    ASSERT_EQ(kTzOk, mesh()->addPolygon(kTzPolygonBezier, vertices.data(), kCount, &polygon));
    ASSERT_EQ(kTzOk, mesh()->addPolygon(kTzPolygonLine, vertices.data() + kCount - 2, 2, &polygon));

    std::vector<TzPoint> pointsRead(40'000);
    std::vector<uint32_t> verticesRead(40'000);
    ASSERT_EQ(kTzOk, mesh()->points(9'000, 40'000, pointsRead.data()));
    ASSERT_EQ(kTzOk, mesh()->vertices(0, 9'000, 40'000, verticesRead.data()));
    for (uint32_t i = 0; i < 40'000; ++i) {
        ASSERT_EQ(points[9'000 + i].y, pointsRead[i].y) << i;
        ASSERT_EQ(vertices[9'000 + i], verticesRead[i]) << i;
    }
    ASSERT_EQ(kTzOk, mesh()->vertices(1, 0, 2, verticesRead.data()));
    EXPECT_EQ(1U, verticesRead[0]);

    TzBox box{};
    ASSERT_EQ(kTzOk, mesh()->bounds(&box));
    EXPECT_EQ(-49'999.0, box.lower.y);
    EXPECT_EQ(7.0, box.lower.z);
    EXPECT_EQ(24'999.5, box.extent.x);
}

TEST_F(SceneTest, RefusesOtherThreadsAndRemembersThem) {
    uint32_t count = 1;
    TzResult counted = kTzOk;
    TzResult tagged = kTzOk;
    TzResult asked = kTzFailed;
    std::thread([&] {
        void* out = nullptr;
        counted = mesh()->pointCount(&count);
        tagged = item()->setTag(tzTag("VBOX"), tzText("0"));
        asked = host_.object()->service(ITzServerRegistry::kId, &out);
        if (out) static_cast<ITzServerRegistry*>(out)->release();
    }).join();
    EXPECT_EQ(kTzWrongThread, counted);
    EXPECT_EQ(kTzWrongThread, tagged);
    EXPECT_EQ(kTzOk, asked) << "services are for any thread";
    EXPECT_EQ(1U, count);
    EXPECT_TRUE(scene_->items()[0]->data().tags.empty());
    EXPECT_EQ((std::map<std::string, uint32_t>{{"ITzItem::setTag", 1}, {"ITzMesh::pointCount", 1}}),
              host_.gate().misuses());
}

}  // namespace
