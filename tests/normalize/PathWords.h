// Paths as words, for tables: "M 1 2 L 3 4 Z", three decimals at most.
#pragma once

#include <QString>
#include <cmath>
#include <string>

#include "normalize/geometry/Path.h"

namespace tznormalize {

inline std::string words(const Path& path) {
    constexpr const char* kLetters[] = {"M", "L", "C", "Z"};
    std::string text;
    for (const Path::Segment segment : path) {
        if (!text.empty()) text += ' ';
        text += kLetters[static_cast<size_t>(segment.verb)];
        for (size_t i = 0; i < 2 * pointCount(segment.verb); ++i) {
            const Point& point = segment.points[i / 2];
            const double value = std::round((i % 2 == 0 ? point.x : point.y) * 1000) / 1000 + 0.0;
            text += ' ' + QString::number(value, 'g', 9).toStdString();
        }
    }
    return text;
}

}  // namespace tznormalize
