#include "normalize/convert/ShapeElements.h"

#include <cmath>

#include "normalize/geometry/PathText.h"
#include "normalize/geometry/SubPaths.h"

namespace tznormalize {
namespace {

const char* capText(LineCap cap) {
    return cap == LineCap::kRound ? "round" : cap == LineCap::kSquare ? "square" : "butt";
}

Box roundedBox(const Path& path, const Grid& grid) {
    const Box box = path.controlsBox().value_or(Box());
    return {grid.round(box.left), grid.round(box.top), grid.round(box.right), grid.round(box.bottom)};
}

WrittenShape polygon(const Path& path, const Grid& grid) {
    WrittenShape shape{OutputElement("polygon"), roundedBox(path, grid)};
    shape.element.set("points", pointsText(path.points(), grid));
    return shape;
}

WrittenShape openLines(const Path& path, const Grid& grid) {
    const std::vector<Point>& points = path.points();
    if (points.size() != 2) {
        WrittenShape shape{OutputElement("polyline"), roundedBox(path, grid)};
        shape.element.set("points", pointsText(points, grid));
        return shape;
    }
    WrittenShape shape{OutputElement("line"), roundedBox(path, grid)};
    shape.element.set("x1", grid.text(points[0].x));
    shape.element.set("y1", grid.text(points[0].y));
    shape.element.set("x2", grid.text(points[1].x));
    shape.element.set("y2", grid.text(points[1].y));
    return shape;
}

// A circle or an ellipse; nothing when it would not come back.
std::optional<WrittenShape> roundShape(const Path& path, const Grid& grid) {
    const Box box = path.controlsBox().value_or(Box());
    const Point centre{grid.round((box.left + box.right) / 2.0), grid.round((box.top + box.bottom) / 2.0)};
    const double rx = grid.round(box.width() / 2.0);
    const double ry = grid.round(box.height() / 2.0);
    if (rx <= 0.0 || ry <= 0.0 || !ellipseSurvives(centre, rx, ry, grid.step())) return std::nullopt;
    WrittenShape shape{OutputElement(rx == ry ? "circle" : "ellipse"),
                       {grid.round(centre.x - rx), grid.round(centre.y - ry), grid.round(centre.x + rx),
                        grid.round(centre.y + ry)}};
    shape.element.set("cx", grid.text(centre.x));
    shape.element.set("cy", grid.text(centre.y));
    if (rx == ry) {
        shape.element.set("r", grid.text(rx));
    } else {
        shape.element.set("rx", grid.text(rx));
        shape.element.set("ry", grid.text(ry));
    }
    return shape;
}

bool isAllOnePoint(const Box& box) {
    return box.left == box.right && box.top == box.bottom;
}

// Whether the import's circle is the same: it is upright, and the import's outline begins elsewhere, which
// dashes would show.
bool staysRound(const Path& path, bool isDashed) {
    const std::vector<Point>& points = path.points();
    if (isDashed || points.size() != 13) return false;
    // An upright ellipse's outline begins and ends its quarters on its axes.
    const Point centre = lerp(points[0], points[6], 0.5);
    const auto isNear = [](double a, double b) { return std::abs(a - b) < 1e-9 * (1.0 + std::abs(a)); };
    return isNear(points[0].y, centre.y) && isNear(points[3].x, centre.x);
}

void setStroke(OutputElement& element, const Look& look, LineCap cap) {
    element.set("stroke", look.stroke.value);
    if (look.strokeOpacity < 1.0) element.set("stroke-opacity", shortNumber(look.strokeOpacity));
    element.set("stroke-width", shortNumber(look.form.width * look.scale));
    if (cap != LineCap::kButt) element.set("stroke-linecap", capText(cap));
    if (look.form.join != LineJoin::kMiter) {
        element.set("stroke-linejoin", look.form.join == LineJoin::kRound ? "round" : "bevel");
    }
    if (look.form.miterLimit != 4.0) element.set("stroke-miterlimit", shortNumber(look.form.miterLimit));
    if (look.form.dashes.empty()) return;
    std::string dashes;
    for (const double dash : look.form.dashes) {
        if (!dashes.empty()) dashes += ',';
        appendShortNumber(dashes, dash * look.scale);
    }
    element.set("stroke-dasharray", std::move(dashes));
    if (look.form.dashOffset != 0.0) {
        element.set("stroke-dashoffset", shortNumber(look.form.dashOffset * look.scale));
    }
}

// Closed outlines get a cap that looks as their join, or run on past their start: the closing is lost on the
// way.
void hideSeams(Path& path, LineCap& cap, const Look& look, const Grid& grid) {
    if (!hasClosing(path)) return;
    const bool isDashed = !look.form.dashes.empty();
    if (look.form.join == LineJoin::kRound && !isDashed && isClosedThroughout(path)) {
        cap = LineCap::kRound;
    } else {
        path = runOn(withoutLoneMoves(onGrid(path, grid)), look.form.width * look.scale / 2.0, grid.step(),
                     isDashed);
    }
}

std::optional<WrittenShape> outlineElement(Path path, Tag origin, const Look& look, bool isStroked,
                                           const Grid& grid, LineCap& cap) {
    const bool isClosedPolygon = path.isClosedPolygon();
    // [trap: rectangles come back as open lines, and do not advance the place among their siblings]
    if (isClosedPolygon && (origin == Tag::kRect || origin == Tag::kPolygon)) return polygon(path, grid);
    if ((origin == Tag::kLine || origin == Tag::kPolyline) && !hasClosing(path)) {
        WrittenShape lines = openLines(path, grid);
        if (isAllOnePoint(lines.box)) return std::nullopt;
        return lines;
    }
    const bool isDashed = isStroked && !look.form.dashes.empty();
    if ((origin == Tag::kCircle || origin == Tag::kEllipse) && staysRound(path, isDashed)) {
        if (std::optional<WrittenShape> shape = roundShape(path, grid)) return shape;
    }
    if (isStroked) hideSeams(path, cap, look, grid);
    return writeArea(grid, path);
}

}  // namespace

double dotLength(const StrokeForm& form) {
    return form.width / 50.0;
}

std::optional<WrittenShape> writeArea(const Grid& grid, const Path& path) {
    std::string data = pathText(path, grid);
    if (data.empty()) return std::nullopt;
    WrittenShape shape{OutputElement("path"), roundedBox(path, grid)};
    shape.element.set("d", std::move(data));
    return shape;
}

std::optional<WrittenShape> writeShape(const Conversion& conversion, Path path, Tag origin, const Look& look,
                                       const Paint& fill, bool isStroked) {
    const Grid& grid = conversion.grid;
    LineCap cap = look.form.cap;
    if (isStroked && cap != LineCap::kButt)
        path = withDots(std::move(path), dotLength(look.form) * look.scale, grid.step());
    path = withoutLoneMoves(std::move(path));
    if (path.isEmpty()) return std::nullopt;
    std::optional<WrittenShape> shape = outlineElement(std::move(path), origin, look, isStroked, grid, cap);
    if (!shape) return std::nullopt;
    OutputElement& element = shape->element;
    element.set("fill", fill.value);
    if (!fill.isNone()) {
        if (look.fillOpacity < 1.0) element.set("fill-opacity", shortNumber(look.fillOpacity));
        if (look.isEvenOdd) element.set("fill-rule", "evenodd");
    }
    if (isStroked) {
        setStroke(element, look, cap);
    } else {
        setNoStroke(conversion, element);
    }
    return shape;
}

void setNoStroke(const Conversion& conversion, OutputElement& element) {
    if (conversion.writtenFor == WrittenFor::kImage) return;
    element.set("stroke", "#000000");
    element.set("stroke-opacity", "0");
    element.set("stroke-width", "0");
}

}  // namespace tznormalize
