// Draws a scene as a picture, for people who want to see what was imported. Called by `tzhost preview`.
#pragma once

#include <QImage>
#include <optional>

#include "host/DrawingPlace.h"
#include "host/scene/Scene.h"

namespace tzhost {

struct PreviewFrame {
    // The page of the drawing fills the picture: its view box, or its size where it has none. Otherwise all
    // that is drawn does, with a margin.
    bool page = false;
    // Where the scene has the drawing, if that is known. Otherwise the drawing's y = 0 is taken to be the top
    // of all that is drawn, which is where an export has it.
    std::optional<DrawingPlace> place = {};
};

// Whether the scene has a page.
bool hasPage(const Scene& scene, const PreviewFrame& frame);

// All meshes, seen along z, as a renderer would draw their elements: with what their groups pass on to them,
// with gradients, patterns and clip paths. Masks, filters and blend modes of groups are not drawn. The long
// side has `longSide` pixels. Throws CTzError when the scene is too large for a picture or there is no
// memory for one, and kTzNotFound when a page is asked for that the scene has not.
QImage drawScene(const Scene& scene, int longSide, const PreviewFrame& frame = {});

}  // namespace tzhost
