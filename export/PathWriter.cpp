// See the header. Called by SVGSaver::visitPolygon().
#include "export/PathWriter.h"

#include "export/SVGSaver.h"
#include "svg/RoundTripNames.h"

namespace tzsvg {
namespace {

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

ErrorState PathWriter::write(SVGSaver& saver) {
    ChildOrder* const parent = saver.selectParent();
    if (!parent || !makePathData(saver)) return ErrorState::kPolygon;
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
        if (!isEnd) return ErrorState::kNone;
    }
    if (isEnd && subPathsUsed_) {
        // Ends without starts: each element repeats the pieces before it. Bounded, as the output would grow
        // with the square of the input.
        constexpr size_t kMostRepeated = size_t{1} << 24;
        repeated_ += subPaths_.size();
        if (repeated_ > kMostRepeated) return ErrorState::kPolygon;
    }
    subPathsUsed_ = subPathsUsed_ || isEnd;

    const std::string_view data = isEnd ? std::string_view(subPaths_) : own;
    saver.element().start(ElementName::kPath);
    saver.element().set(AttributeName::kData, data);
    saver.addElement(*parent);
    return ErrorState::kNone;
}

}  // namespace tzsvg
