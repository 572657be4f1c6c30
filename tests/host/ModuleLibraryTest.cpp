// Loading, using and unloading modules, with the probe module and its variants.
#include "host/ModuleLibrary.h"

#include <gtest/gtest.h>

#include <cstring>

#include "host/SceneLoading.h"
#include "host/core/OperationError.h"
#include "tests/common/Recorder.h"
#include "tests/common/TestFolder.h"

using namespace tzhost;

namespace {

using Texts = std::vector<std::string>;

std::filesystem::path probe(const std::string& name) {
    return std::filesystem::path(PROBE_FOLDER) / (name + ".so");
}

TEST(ModuleLibrary, RefusesWhatIsNoModuleOfItsVersion) {
    const TestFolder folder;
    struct Row {
        std::filesystem::path file;
        TzResult code;
        const char* reason;
    };
    const Row rows[] = {
        {folder / "missing.so", kTzNotFound, "load module: 0x80000004 (no such module file)"},
        {folder.write("text.so", "text"), kTzFailed, "load module: 0x80000000 (file too short)"},
        {probe("probe_no_entry"), kTzNoInterface, "create module: 0x80000003 (the library has no entry"},
        {probe("probe_old_sdk"), kTzVersionMismatch, "the module was built for SDK 0.9, the host for 1.0"},
        {probe("probe_next_major"), kTzVersionMismatch, "the module was built for SDK 2.0"},
        {probe("probe_refuses"), kTzNotReady, "initialise module: 0x8000000B (called out of order)"},
    };
    for (const Row& row : rows) {
        Host host;
        try {
            const ModuleLibrary module(host, row.file);
            ADD_FAILURE() << row.file << " was loaded";
        } catch (const OperationError& error) {
            EXPECT_EQ(row.code, error.result()) << row.file;
            EXPECT_NE(nullptr, std::strstr(error.what(), row.reason)) << error.what();
        }
        EXPECT_TRUE(host.servers().servers().empty()) << row.file;
        EXPECT_EQ(Texts{}, host.foreignReferences()) << row.file;
    }
}

class ProbeTest : public ::testing::Test {
  protected:
    // Imports a file with these commands; answers what went wrong, without the file's name, or nothing.
    std::string import(const std::string& commands, const ImportOptions& options = {}) {
        const auto file = folder_.write("a.b.probe", "probe\n" + commands);
        try {
            summary_ = importFile(host_, *scene_, file, options);
        } catch (const OperationError& error) {
            return std::string(error.what()).substr(file.native().size() + 2);
        }
        return "";
    }

    TestFolder folder_;
    std::shared_ptr<Recorder> recorder_ = std::make_shared<Recorder>();
    Host host_{recorder_};
    ModuleLibrary module_{host_, probe("probe_newer_minor")};
    ScenePtr scene_ = host_.makeScene();
    ImportSummary summary_;
};

TEST_F(ProbeTest, ImportsIntoAnItemNamedAfterTheFile) {
    EXPECT_EQ("", import("triangle\ntriangle\n"));
    ASSERT_EQ(1U, scene_->items().size());
    const ItemData& item = scene_->items()[0]->data();
    EXPECT_EQ("a.b", item.name);
    EXPECT_EQ("a triangle", item.channels.at(0).text);
    EXPECT_EQ(2U, summary_.shapes);
    EXPECT_EQ(6U, summary_.points);
    scene_ = {};
    EXPECT_EQ(Texts{}, module_.unload());
}

TEST_F(ProbeTest, DiscardsWhatARefusedImportMade) {
    struct Row {
        const char* commands;
        uint64_t cancelAfter;
        const char* expected;
    };
    const Row rows[] = {
        {"triangle\nfail\n", 0, "load: 0x80000000 (failed)"},
        {"triangle\nthrow\n", 0, "load: 0x80000000 (failed)"},
        {"exhaust\n", 0, "load: 0x80000001 (out of memory)"},
        {"triangle\ntriangle\ntriangle\n", 2, "load: 0x80000006 (cancelled)"},
    };
    ASSERT_EQ("", import("triangle\n"));
    for (const Row& row : rows) {
        EXPECT_EQ(row.expected, import(row.commands, {row.cancelAfter})) << row.commands;
        EXPECT_EQ(1U, scene_->items().size()) << row.commands;
        EXPECT_EQ("", import("")) << "after " << row.commands;
        scene_->truncate(1);
    }
    EXPECT_EQ("", import("triangle\ntriangle\n", {3})) << "the third step is not made";
}

TEST_F(ProbeTest, KeepsLogLinesEachOnALineOfItsOwn) {
    EXPECT_EQ("load: 0x80000000 (failed)", import("log\nfail\n"));
    EXPECT_EQ((Texts{"ended\n", "not ended\n", "an error\n"}), recorder_->lines);
    EXPECT_EQ("io-status", recorder_->entries.at(2).subsystem);
    EXPECT_EQ("load/save error", recorder_->headings.at(2));
}

TEST_F(ProbeTest, ReportsWhatIsNotReleasedAtUnload) {
    ASSERT_EQ("", import("leak\n"));
    ITzItem* const leaked = scene_->items()[0].get();
    scene_ = {};
    EXPECT_EQ(Texts{"item: 1 reference not released"}, module_.unload());
    // The library stays open for it: its package instance can still be called.
    EXPECT_EQ(0U, leaked->release());
}

}  // namespace
