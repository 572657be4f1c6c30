#include "normalize/geometry/StrokeOutline.h"

#include <QPainterPath>
#include <QPainterPathStroker>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "normalize/geometry/SubPaths.h"

namespace tznormalize {
namespace {

// Qt's stroker makes curves fine enough for paths of this size; smaller ones are enlarged for it.
constexpr double kStrokerSize = 1000.0;
constexpr double kMostDashes = 10'000;  // with more the stroke is solid: the dashes could not be seen

// Strokes thinner than this part of the path's size cover nothing, and dashes in such widths have no end.
constexpr double kThinnest = 1e-7;

QPainterPath painterPath(const Path& path, double factor) {
    const auto scaled = [factor](const Point& p) { return QPointF(p.x * factor, p.y * factor); };
    QPainterPath out;
    for (const Path::Segment segment : path) {
        const Point* const p = segment.points;
        switch (segment.verb) {
            case Verb::kMove:
                out.moveTo(scaled(p[0]));
                break;
            case Verb::kLine:
                out.lineTo(scaled(p[0]));
                break;
            case Verb::kCurve:
                out.cubicTo(scaled(p[0]), scaled(p[1]), scaled(p[2]));
                break;
            case Verb::kClose:
                out.closeSubpath();
                break;
        }
    }
    return out;
}

// The outline's sub-paths, each closed.
Path areaOf(const QPainterPath& outline, double factor) {
    Path out;
    const auto count = static_cast<size_t>(outline.elementCount());
    out.reserve(count, count);
    const auto pointAt = [&](int index) {
        const QPainterPath::Element element = outline.elementAt(index);
        return Point{element.x / factor, element.y / factor};
    };
    for (int i = 0; i < outline.elementCount(); ++i) {
        const QPainterPath::Element element = outline.elementAt(i);
        if (element.isMoveTo()) {
            if (!out.isEmpty()) out.close();
            out.moveTo(pointAt(i));
        } else if (element.isLineTo()) {
            out.lineTo(pointAt(i));
        } else {
            out.curveTo(pointAt(i), pointAt(i + 1), pointAt(i + 2));
            i += 2;
        }
    }
    if (!out.isEmpty()) out.close();
    return out;
}

double greatestCoordinate(const Path& path) {
    double most = 0.0;
    for (const Point& point : path.points()) most = std::max({most, std::abs(point.x), std::abs(point.y)});
    return most;
}

double lengthOfControls(const Path& path) {
    double length = 0.0;
    const std::vector<Point>& points = path.points();
    for (size_t i = 1; i < points.size(); ++i) length += distance(points[i - 1], points[i]);
    return length;
}

void setDashes(QPainterPathStroker& stroker, const StrokeForm& form, const Path& path) {
    const double period = std::accumulate(form.dashes.begin(), form.dashes.end(), 0.0);
    const double repeats = lengthOfControls(path) / period;
    if (!(repeats * static_cast<double>(form.dashes.size()) < kMostDashes)) return;
    QVector<qreal> pattern;  // in stroke widths
    const int rounds = form.dashes.size() % 2 == 0 ? 1 : 2;
    for (int round = 0; round < rounds; ++round) {
        for (const double dash : form.dashes) pattern.append(std::max(dash / form.width, 1e-6));
    }
    stroker.setDashPattern(pattern);
    stroker.setDashOffset(form.dashOffset / form.width);
}

}  // namespace

Path strokeOutline(const Path& path, const StrokeForm& form) {
    const double size = greatestCoordinate(path);
    if (form.width < kThinnest * size) return {};
    const double factor = size < kStrokerSize ? kStrokerSize / std::max(size, 1e-9) : 1.0;
    QPainterPathStroker stroker;
    stroker.setWidth(form.width * factor);
    stroker.setCapStyle(form.cap == LineCap::kRound    ? Qt::RoundCap
                        : form.cap == LineCap::kSquare ? Qt::SquareCap
                                                       : Qt::FlatCap);
    stroker.setJoinStyle(form.join == LineJoin::kRound   ? Qt::RoundJoin
                         : form.join == LineJoin::kBevel ? Qt::BevelJoin
                                                         : Qt::SvgMiterJoin);
    stroker.setMiterLimit(std::max(form.miterLimit, 1.0));
    stroker.setCurveThreshold(0.1);
    if (!form.dashes.empty()) setDashes(stroker, form, path);
    const Path outline =
        withoutLoneMoves(areaOf(stroker.createStroke(painterPath(withoutLoneMoves(path), factor)), factor));
    return outline.isFinite() ? outline : Path();
}

double dashPeriod(const std::vector<double>& dashes) {
    const double sum = std::accumulate(dashes.begin(), dashes.end(), 0.0);
    return dashes.size() % 2 == 0 ? sum : 2.0 * sum;
}

double dashCount(const Path& path, const std::vector<double>& dashes) {
    constexpr double kMostOfPiece = 10'000.0;
    const double each = 2.0 * std::accumulate(dashes.begin(), dashes.end(), 0.0) / double(dashes.size());
    double count = 0.0;
    Point current;
    for (const Path::Segment segment : path) {
        for (size_t i = 0; i < pointCount(segment.verb); ++i) {
            const Point next = segment.points[i];
            const double ofPiece = distance(current, next) / each;
            if (segment.verb != Verb::kMove)
                count += segment.verb == Verb::kLine && ofPiece > kMostOfPiece ? 1.0 : ofPiece;
            current = next;
        }
    }
    return count;
}

}  // namespace tznormalize
