#include "normalize/geometry/Arc.h"

#include <algorithm>
#include <cmath>

namespace tznormalize {
void appendArc(Path& path, const Point& start, const Arc& arc) {
    if (start == arc.end) return;
    double rx = std::abs(arc.rx);
    double ry = std::abs(arc.ry);
    if (rx == 0 || ry == 0) {
        path.lineTo(arc.end);
        return;
    }
    // In the ellipse's own directions, from the middle between the ends.
    const double cosine = std::cos(arc.rotation * kPi / 180);
    const double sine = std::sin(arc.rotation * kPi / 180);
    const Point half = {(start.x - arc.end.x) / 2, (start.y - arc.end.y) / 2};
    const Point p = {cosine * half.x + sine * half.y, -sine * half.x + cosine * half.y};
    const double needed = (p.x / rx) * (p.x / rx) + (p.y / ry) * (p.y / ry);
    if (needed > 1) {
        rx *= std::sqrt(needed);
        ry *= std::sqrt(needed);
    }
    // On the unit circle: where the ends lie from the centre.
    const Point u = {p.x / rx, p.y / ry};
    const double squared = u.x * u.x + u.y * u.y;
    double root = std::sqrt(std::max(0.0, (1 - squared) / squared));
    if (arc.isLarge == arc.isSweep) root = -root;
    const Point centre = {root * u.y, -root * u.x};
    const double first = std::atan2(u.y - centre.y, u.x - centre.x);
    double sweep = std::atan2(-u.y - centre.y, -u.x - centre.x) - first;
    if (arc.isSweep && sweep < 0) sweep += 2 * kPi;
    if (!arc.isSweep && sweep > 0) sweep -= 2 * kPi;

    const Point middle = lerp(start, arc.end, 0.5);
    const auto onPage = [&](double x, double y) {
        const double ex = rx * (x + centre.x);
        const double ey = ry * (y + centre.y);
        return Point{cosine * ex - sine * ey + middle.x, sine * ex + cosine * ey + middle.y};
    };
    const int count = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / (kPi / 2) - 1e-9)));
    const double step = sweep / count;
    const double handle = 4.0 / 3 * std::tan(step / 4);
    double c0 = std::cos(first);
    double s0 = std::sin(first);
    for (int i = 1; i <= count; ++i) {
        const double c1 = std::cos(first + i * step);
        const double s1 = std::sin(first + i * step);
        path.curveTo(onPage(c0 - handle * s0, s0 + handle * c0), onPage(c1 + handle * s1, s1 - handle * c1),
                     i == count ? arc.end : onPage(c1, s1));
        c0 = c1;
        s0 = s1;
    }
}

}  // namespace tznormalize
