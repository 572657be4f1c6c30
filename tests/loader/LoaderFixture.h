// A host with the module loaded, and documents imported into it from text: what the loader's tests work with.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "host/ModuleLibrary.h"
#include "host/SceneLoading.h"
#include "host/core/OperationError.h"
#include "host/scene/Tags.h"
#include "tests/common/Recorder.h"
#include "tests/common/TestFolder.h"

namespace tzhost {

class LoaderTest : public testing::Test {
  protected:
    // Imports a document; the scene's items, or none when it was refused.
    const std::vector<CTzPtr<Item>>& import(const std::string& document, const ImportOptions& options = {}) {
        recorder_->clear();
        refusal_.clear();
        code_ = kTzOk;
        scene_ = session_.host.makeScene();
        try {
            importFile(session_.host, *scene_, folder_.write("drawing.svg", document), options);
        } catch (const OperationError& error) {
            refusal_ = error.what();
            code_ = error.result();
        }
        return scene_->items();
    }

    bool imports(const std::string& document) { return !import(document).empty(); }

    const ItemData& item() const { return scene_->items().at(0)->data(); }
    const MeshData& mesh() const { return item().mesh; }

    std::string tag(uint32_t polygon, const char (&id)[5]) const {
        return std::string(findTag(mesh().polygon(polygon).tags, tzTag(id)).value_or("-"));
    }

    // One tag of every polygon, joined by blanks.
    std::string tags(const char (&id)[5]) const {
        std::string all;
        for (uint32_t i = 0; i < mesh().polygonCount(); ++i) all += (i ? " " : "") + tag(i, id);
        return all;
    }

    // A polygon's vertices as "x,y x,y ...".
    std::string vertices(uint32_t polygon) const {
        std::ostringstream text;
        const Polygon& of = mesh().polygon(polygon);
        for (uint32_t i = 0; i < of.vertexCount; ++i) {
            const TzPoint& point = mesh().point(mesh().vertex(of, i));
            text << (i ? " " : "") << point.x + 0.0 << ',' << point.y + 0.0;
        }
        return text.str();
    }

    // The points of a polygon's vertices, as indices: "0 1 2 0".
    std::string indices(uint32_t polygon) const {
        std::string text;
        const Polygon& of = mesh().polygon(polygon);
        for (uint32_t i = 0; i < of.vertexCount; ++i)
            text += (i ? " " : "") + std::to_string(mesh().vertex(of, i));
        return text;
    }

    // Types and vertices of all polygons: "LINE 0,0 1,1; BEZR 2,2".
    std::string outlines() const {
        std::string all;
        for (uint32_t i = 0; i < mesh().polygonCount(); ++i)
            all += (i ? "; " : "") + tagName(mesh().polygon(i).type) + ' ' + vertices(i);
        return all;
    }

    // All tags of a polygon in the order of their creation: "FILL=red ZORD=0".
    std::string tagList(uint32_t polygon) const {
        std::string all;
        for (TagReader reader(mesh().polygon(polygon).tags); reader.next();)
            all += (all.empty() ? "" : " ") + tagName(reader.id()) + '=' + std::string(reader.text());
        return all;
    }

    // Everything that an import leaves on the item, to compare two of them.
    std::string everything() const {
        std::string all = outlines();
        for (uint32_t i = 0; i < mesh().polygonCount(); ++i) all += '\n' + indices(i) + ' ' + tagList(i);
        for (const ItemTag& entry : item().tags) all += '\n' + tagName(entry.id) + '=' + entry.text;
        for (const Channel& entry : item().channels) all += '\n' + entry.name + '=' + entry.text;
        return all;
    }

    std::string itemTag(const char (&id)[5]) const {
        for (const ItemTag& entry : item().tags) {
            if (entry.id == tzTag(id)) return entry.text;
        }
        return "-";
    }

    std::string channel(const std::string& name) const {
        for (const Channel& entry : item().channels) {
            if (entry.name == name) return entry.text;
        }
        return "-";
    }

    TestFolder folder_;
    std::shared_ptr<Recorder> recorder_ = std::make_shared<Recorder>();
    Session session_{TZSVG_MODULE, recorder_};
    ScenePtr scene_;
    const std::vector<std::string>& log_ = recorder_->lines;
    std::string refusal_;  // of the last import: the host's message and code
    TzResult code_ = kTzOk;
};

}  // namespace tzhost
