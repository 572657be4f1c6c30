// See the header. Called by SVGSaver::visitPolygon().
#include "export/PolygonWriter.h"

#include <string>

#include "export/SVGSaver.h"
#include "svg/RoundTripNames.h"

namespace tzsvg {
namespace {

bool setEndPoints(SVGSaver& saver) {
    const auto first = saver.project(saver.polygonVertices()[0]);
    const auto second = saver.project(saver.polygonVertices()[1]);
    if (!first || !second) return false;
    saver.element().set(AttributeName::kX1, realText(first->x()));
    saver.element().set(AttributeName::kY1, realText(first->y()));
    saver.element().set(AttributeName::kX2, realText(second->x()));
    saver.element().set(AttributeName::kY2, realText(second->y()));
    return true;
}

bool setPoints(SVGSaver& saver) {
    CoordinateText& text = saver.coordinates();
    text.clear();
    for (const uint32_t vertex : saver.polygonVertices()) {
        const auto point = saver.project(vertex);
        if (!point) return false;
        // With a space behind the last pair too. Meant so: the text of existing drawings must not change.
        // Saver/scenes pins it.
        text.appendPair(point->x(), point->y());
    }
    saver.element().set(AttributeName::kPoints, text.view());
    return true;
}

}  // namespace

ErrorState writeLinePolygon(SVGSaver& saver) {
    const std::string* const primitive = saver.polygonTag(kTagPrimitive);
    const std::string kind = primitive ? *primitive : "POLYLINE";
    ChildOrder* const parent = kind.empty() ? nullptr : saver.selectParent();
    if (!parent) return ErrorState::kPolygon;

    const auto isKind = [&](const char* name) { return kind.find(name) != std::string::npos; };
    // Rectangles come back as polylines: the numbers in the kind text are not read. Meant so: the mesh may
    // have been edited since, and its vertices are what counts. Saver/scenes (kinds) pins it.
    const bool isPolyline = isKind("POLYLINE");
    const bool isPolygon = !isPolyline && isKind("POLYGON");
    const bool isLine = !isPolyline && !isPolygon && saver.polygonVertices().size() == 2;
    saver.element().start(isLine      ? ElementName::kLine
                          : isPolygon ? ElementName::kPolygon
                                      : ElementName::kPolyline);
    const bool written = isLine ? setEndPoints(saver) : setPoints(saver);
    if (!written) return ErrorState::kPolygon;
    saver.addElement(*parent);
    return ErrorState::kNone;
}

}  // namespace tzsvg
