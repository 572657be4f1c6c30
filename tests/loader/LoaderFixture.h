// A host with the module loaded, and documents imported into it from text: what the loader's tests work with.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "host/OperationError.h"
#include "host/SceneLoading.h"
#include "host/Session.h"
#include "tests/host/TestFolder.h"

namespace tzhost {

class LoaderTest : public testing::Test {
  protected:
    LoaderTest() {
        // A line that was cut comes without its end, and the end after it.
        session_.host.log().setSink([this](std::string_view text) {
            if (log_.empty() || log_.back().back() == '\n') log_.emplace_back();
            log_.back() += text;
        });
    }

    // Imports a document; the scene's items, or none when it was refused.
    const std::vector<CTzPtr<Item>>& import(const std::string& document, const ImportOptions& options = {}) {
        log_.clear();
        scene_ = session_.host.makeScene();
        try {
            importFile(session_.host, *scene_, folder_.write("drawing.svg", document), options);
        } catch (const OperationError& error) {
            refusal_ = error.what();
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
    Session session_{TZSVG_MODULE};
    ScenePtr scene_;
    std::vector<std::string> log_;
    std::string refusal_;
};

}  // namespace tzhost
