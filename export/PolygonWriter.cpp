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
    saver.element().set(Attribute::kX1, realText(first->x()));
    saver.element().set(Attribute::kY1, realText(first->y()));
    saver.element().set(Attribute::kX2, realText(second->x()));
    saver.element().set(Attribute::kY2, realText(second->y()));
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
    saver.element().set(Attribute::kPoints, text.view());
    return true;
}

// "M" before the first point, "C" before every third from the second on. False when a vertex cannot be
// projected.
bool makePathData(SVGSaver& saver) {
    CoordinateText& text = saver.coordinates();
    text.clear();
    int state = 0;
    for (const uint32_t vertex : saver.polygonVertices()) {
        const auto point = saver.project(vertex);
        if (!point) return false;
        if (state == 0) text.append('M');
        if (state == 1) text.append('C');
        state = state == 3 ? 1 : state + 1;
        text.appendPlainPair(point->x(), point->y());
    }
    return true;
}

bool contains(const std::string& text, QLatin1String word) {
    return QString::fromStdString(text).contains(word, Qt::CaseInsensitive);
}

}  // namespace

bool PolygonWriter::writeLine(SVGSaver& saver) {
    const std::string* const primitive = saver.polygonTag(kTagPrimitive);
    const std::string kind = primitive ? *primitive : "POLYLINE";
    ChildOrder* const parent = kind.empty() ? nullptr : saver.selectParent();
    if (!parent) return false;

    const auto isKind = [&](const char* name) { return kind.find(name) != std::string::npos; };
    // Rectangles come back as polylines: the numbers in the kind text are not read. Meant so: the mesh may
    // have been edited since, and its vertices are what counts. Saver/scenes (kinds) pins it.
    const bool isPolyline = isKind("POLYLINE");
    const bool isPolygon = !isPolyline && isKind("POLYGON");
    const bool isLine = !isPolyline && !isPolygon && saver.polygonVertices().size() == 2;
    saver.element().start(isLine ? Element::kLine : isPolygon ? Element::kPolygon : Element::kPolyline);
    const bool written = isLine ? setEndPoints(saver) : setPoints(saver);
    if (!written) return false;
    saver.addElement(*parent);
    return true;
}

bool PolygonWriter::writePath(SVGSaver& saver) {
    ChildOrder* const parent = saver.selectParent();
    if (!parent || !makePathData(saver)) return false;
    const std::string_view own = saver.coordinates().view();

    const std::string* const piece = saver.polygonTag(kTagSubPath);
    const bool isPiece = piece && !piece->empty();
    const bool isEnd = isPiece && contains(*piece, QLatin1String("end"));
    if (isPiece) {
        if (contains(*piece, QLatin1String("start"))) {
            subPaths_.clear();
            subPathsUsed_ = false;
        }
        subPaths_ += own;
        if (!isEnd) return true;
    }
    if (isEnd && subPathsUsed_) {
        // Ends without starts: each element repeats the pieces before it. Bounded, as the output would grow
        // with the square of the input.
        constexpr size_t kMostRepeated = size_t{1} << 24;
        repeated_ += subPaths_.size();
        if (repeated_ > kMostRepeated) return false;
    }
    subPathsUsed_ = subPathsUsed_ || isEnd;

    const std::string_view data = isEnd ? std::string_view(subPaths_) : own;
    saver.element().start(Element::kPath);
    saver.element().set(Attribute::kData, data);
    saver.addElement(*parent);
    return true;
}

}  // namespace tzsvg
