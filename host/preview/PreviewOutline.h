// The outline of a shape in a picture, made of its polygons. Used by Preview.cpp.
#pragma once

#include <QPainterPath>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "host/preview/PreviewView.h"
#include "host/scene/MeshData.h"

namespace tzhost {

class PreviewOutline {
  public:
    PreviewOutline(const PreviewView& view, const MeshData& mesh) : view_(view), mesh_(mesh) {}

    // Adds a polygon: a sub-path.
    void add(const Polygon& polygon);

    bool isEmpty() const { return path_.isEmpty(); }

    // The outline in pixels; the next one begins empty.
    QPainterPath take();

  private:
    struct Copies {
        uint32_t count = 0;
        const Polygon* polygon = nullptr;
    };

    void addSubPath(const Polygon& polygon);
    Copies& copiesOf(const Polygon& polygon);

    const PreviewView& view_;
    const MeshData& mesh_;
    QPainterPath path_;
    uint32_t polygons_ = 0;
    std::unordered_map<size_t, Copies> copies_;  // by a hash of the polygon's corners
};

}  // namespace tzhost
