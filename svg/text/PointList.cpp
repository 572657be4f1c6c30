// Tested by tests/text/ListsTest.cpp.
#include "svg/text/PointList.h"

#include <cmath>

#include "svg/text/NumberReader.h"

namespace tzsvg {
namespace {

bool readPair(QStringView part, QPointF& point) {
    const auto comma = part.indexOf(u',');
    if (comma < 0 || part.indexOf(u',', comma + 1) >= 0) return false;
    point = QPointF(toDouble(part.left(comma)), toDouble(part.mid(comma + 1)));
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

}  // namespace

bool readPointList(QStringView text, QVector<QPointF>& points) {
    points.clear();
    qsizetype position = 0;
    for (skipWhiteSpace(text, position); position < text.size(); skipWhiteSpace(text, position)) {
        const qsizetype start = position;
        while (position < text.size() && !text.at(position).isSpace()) ++position;
        QPointF point;
        if (!readPair(text.mid(start, position - start), point)) {
            points.clear();
            return false;
        }
        points.append(point);
    }
    return true;
}

}  // namespace tzsvg
