// The keys stand in the order of the documented example. Points and polygons, of which a scene has millions,
// take a line each and no blanks: without blanks a large file is a fifth smaller.
#include "host/scenefile/SceneWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/io/Json.h"
#include "host/scene/Tags.h"

namespace tzhost {
namespace {

bool needsEscape(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
}

// Writes pieces of JSON into an output file.
class JsonText {
  public:
    explicit JsonText(OutputFile& out) : out_(out) {}

    JsonText& raw(std::string_view text) {
        out_.write(text);
        return *this;
    }

    JsonText& string(std::string_view text) {
        if (std::none_of(text.begin(), text.end(), needsEscape)) return raw("\"").raw(text).raw("\"");
        JsonWriter<JsonText>(*this).String(text.data(), text.size());
        return *this;
    }

    JsonText& number(uint32_t value) { return raw(shortest(value)); }

    // The shortest digits that read back as the same value.
    JsonText& number(double value) {
        if (value == 0) {
            // Without the fraction a reader would take it for the integer 0, which has no sign.
            return raw(std::signbit(value) ? "-0.0" : "0");
        }
        return raw(shortest(value));
    }

    // ---- For JsonWriter; the names are RapidJSON's. ----

    using Ch = char;
    void Put(char character) { out_.write({&character, 1}); }
    void Flush() {}

  private:
    template <class Number>
    std::string_view shortest(Number value) {
        const auto end = std::to_chars(digits_.data(), digits_.data() + digits_.size(), value).ptr;
        return {digits_.data(), static_cast<size_t>(end - digits_.data())};
    }

    OutputFile& out_;
    std::array<char, 32> digits_{};
};

// What to write before each element of a list: `first` before the first, `next` before all others.
class Separator {
  public:
    explicit Separator(std::string_view first, std::string_view next) : text_(first), next_(next) {}
    std::string_view operator()() { return std::exchange(text_, next_); }

  private:
    std::string_view text_;
    std::string_view next_;
};

void writeTag(JsonText& json, TzTagId id, std::string_view text, std::string_view colon) {
    json.string(tagName(id)).raw(colon).string(text);
}

void writePolygon(JsonText& json, const MeshData& mesh, const Polygon& polygon) {
    json.raw("{\"type\":").string(tagName(polygon.type)).raw(",\"vertices\":[");
    Separator vertexSeparator("", ",");
    for (uint32_t i = 0; i < polygon.vertexCount; ++i) {
        json.raw(vertexSeparator()).number(mesh.vertex(polygon, i));
    }
    json.raw("]");
    if (polygon.tags.size > 0) {
        Separator separator(",\"tags\":{", ",");
        for (TagReader tags(polygon.tags); tags.next();)
            writeTag(json.raw(separator()), tags.id(), tags.text(), ":");
        json.raw("}");
    }
    json.raw("}");
}

// What a scene is written with.
struct Writing {
    const OutputFile& out;
    Observer& observer;
    JsonText json;
    Progress progress;

    // False when the rest need not be written.
    bool goesOn() const { return !out.failed() && !observer.cancelled(); }
};

void writeMesh(Writing& writing, const MeshData& mesh) {
    JsonText& json = writing.json;
    if (mesh.pointCount() > 0) {
        Separator separator(",\n      \"points\": [\n", ",\n");
        for (uint32_t i = 0; i < mesh.pointCount() && writing.goesOn(); ++i) {
            const TzPoint& point = mesh.point(i);
            json.raw(separator()).raw("[").number(point.x).raw(",").number(point.y).raw(",");
            json.number(point.z).raw("]");
            writing.progress.step();
        }
        json.raw("\n      ]");
    }
    if (mesh.polygonCount() > 0) {
        Separator separator(",\n      \"polygons\": [\n", ",\n");
        for (uint32_t i = 0; i < mesh.polygonCount() && writing.goesOn(); ++i) {
            writePolygon(json.raw(separator()), mesh, mesh.polygon(i));
            writing.progress.step();
        }
        json.raw("\n      ]");
    }
}

void writeItem(Writing& writing, const ItemData& item) {
    JsonText& json = writing.json;
    json.raw("{\n      \"type\": ").string(item.type).raw(",\n      \"name\": ").string(item.name);
    if (!item.tags.empty()) {
        Separator separator(",\n      \"tags\": { ", ", ");
        for (const ItemTag& tag : item.tags) writeTag(json.raw(separator()), tag.id, tag.text, ": ");
        json.raw(" }");
    }
    if (!item.packages.empty()) {
        Separator separator(",\n      \"packages\": [ ", ", ");
        for (const ItemPackage& package : item.packages) json.raw(separator()).string(package.name);
        json.raw(" ]");
    }
    if (!item.channels.empty()) {
        Separator separator(",\n      \"channels\": {\n        ", ",\n        ");
        for (const Channel& channel : item.channels) {
            json.raw(separator()).string(channel.name).raw(": ").string(channel.text);
        }
        json.raw("\n      }");
    }
    writeMesh(writing, item.mesh);
    json.raw("\n    }");
}

uint64_t pointsAndPolygons(const Scene& scene) {
    uint64_t count = 0;
    for (const auto& item : scene.items()) {
        const MeshData& mesh = item->data().mesh;
        count += uint64_t{mesh.pointCount()} + mesh.polygonCount();
    }
    return count;
}

}  // namespace

void writeScene(const Scene& scene, OutputFile& out) {
    inStep(out.name(), "write", [&] {
        Observer& observer = scene.observer();
        Writing writing{
            out, observer, JsonText(out), {observer, "writing " + out.name(), pointsAndPolygons(scene)}};
        JsonText& json = writing.json;
        json.raw("{\n  \"format\": \"tzscene\", \"version\": 1,\n  \"items\": [");
        Separator separator("\n    ", ",\n    ");
        for (const auto& item : scene.items()) {
            json.raw(separator());
            writeItem(writing, item->data());
        }
        json.raw(scene.items().empty() ? "]\n}\n" : "\n  ]\n}\n");
        if (observer.cancelled()) throw CTzError(kTzCancelled);
        out.complete();
    });
}

void writeSceneFile(const Scene& scene, const std::filesystem::path& file) {
    OutputFile out(file, "write");
    writeScene(scene, out);
    out.commit();
}

}  // namespace tzhost
