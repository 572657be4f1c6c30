#include "normalize/geometry/PathText.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "normalize/geometry/Arc.h"
#include "normalize/write/Grid.h"

namespace tznormalize {
namespace {

class PathWriter {
  public:
    explicit PathWriter(const Grid& grid) : grid_(grid) {}

    std::string write(const Path& path) {
        text_.reserve(path.points().size() * kUsual);
        for (const Path::Segment segment : path) writeSegment(segment);
        return std::move(text_);
    }

  private:
    Point rounded(const Point& point) const { return {grid_.round(point.x), grid_.round(point.y)}; }

    void writeSegment(const Path::Segment& segment) {
        switch (segment.verb) {
            case Verb::kMove:
                current_ = rounded(segment.points[0]);
                isDrawn_ = false;
                break;
            case Verb::kLine:
                writeLine(rounded(segment.points[0]));
                break;
            case Verb::kCurve:
                writeCurve(rounded(segment.points[0]), rounded(segment.points[1]),
                           rounded(segment.points[2]));
                break;
            case Verb::kClose:
                if (isDrawn_) text_ += " Z";
                break;
        }
    }

    void writeLine(const Point& end) {
        if (end == current_) return;
        if (current_.x * end.x < 0) {
            writeCurve(rounded(lerp(current_, end, 1.0 / 3)), rounded(lerp(current_, end, 2.0 / 3)), end);
            return;
        }
        begin();
        append('L', {end});
        current_ = end;
    }

    void writeCurve(const Point& control1, const Point& control2, const Point& end) {
        if (end == current_ && control1 == current_ && control2 == current_) return;
        begin();
        append('C', {control1, control2, end});
        current_ = end;
    }

    // A sub-path begins with what is left of it.
    void begin() {
        if (isDrawn_) return;
        isDrawn_ = true;
        append('M', {current_});
    }

    void append(char letter, std::initializer_list<Point> points) {
        char piece[2 + 3 * 2 * Grid::kRoom];
        char* at = piece;
        if (!text_.empty()) *at++ = ' ';
        *at++ = letter;
        for (const Point& point : points) {
            at = grid_.write(at, point.x);
            *at++ = ' ';
            at = grid_.write(at, point.y);
            *at++ = ' ';
        }
        text_.append(piece, at - 1);
    }

    // Characters that a point of a drawing's size takes.
    static constexpr size_t kUsual = 17;

    const Grid& grid_;
    std::string text_;
    Point current_;
    bool isDrawn_ = false;  // something of the sub-path was written
};

}  // namespace

std::string pathText(const Path& path, const Grid& grid) {
    return PathWriter(grid).write(path);
}

std::string pointsText(const std::vector<Point>& points, const Grid& grid) {
    std::string text;
    text.reserve(points.size() * 17);
    for (const Point& point : points) {
        char piece[2 * Grid::kRoom];
        char* at = piece;
        if (!text.empty()) *at++ = ' ';
        at = grid.write(at, point.x);
        *at++ = ',';
        text.append(piece, grid.write(at, point.y));
    }
    return text;
}

bool ellipseSurvives(const Point& centre, double rx, double ry, double step) {
    if (!(rx > 0 && ry > 0)) return false;
    constexpr std::array<double, 4> kShares = {-1, -kQuarterCircle, kQuarterCircle, 1};
    const double least = step / 5 + 1e-4;
    const auto comesBack = [least](double value) { return value == 0 || std::abs(value) >= least; };
    return std::all_of(kShares.begin(), kShares.end(), [&](double share) {
        return comesBack(centre.x + share * rx) && comesBack(centre.y + share * ry);
    });
}

}  // namespace tznormalize
