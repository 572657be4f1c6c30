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
        for (const Path::Segment segment : path) writeSegment(segment);
        flush();
        return std::move(text_);
    }

  private:
    // A point in lines of the grid.
    struct Crossing {
        int64_t x = 0;
        int64_t y = 0;

        bool operator==(const Crossing& other) const { return x == other.x && y == other.y; }
    };

    Crossing rounded(const Point& point) const { return {grid_.linesTo(point.x), grid_.linesTo(point.y)}; }

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
                if (isDrawn_) append('Z', {});
                break;
        }
    }

    void writeLine(const Crossing& end) {
        if (end == current_) return;
        if ((current_.x < 0 && end.x > 0) || (current_.x > 0 && end.x < 0)) {
            const Point from{grid_.at(current_.x), grid_.at(current_.y)};
            const Point to{grid_.at(end.x), grid_.at(end.y)};
            writeCurve(rounded(lerp(from, to, 1.0 / 3)), rounded(lerp(from, to, 2.0 / 3)), end);
            return;
        }
        begin();
        append('L', {end});
        current_ = end;
    }

    void writeCurve(const Crossing& control1, const Crossing& control2, const Crossing& end) {
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

    void append(char letter, std::initializer_list<Crossing> points) {
        constexpr ptrdiff_t kMost = 2 + 6 * Grid::kRoom;
        if (std::end(buffer_) - at_ < kMost) flush();
        if (letter != 'M' || !text_.empty() || at_ != buffer_) *at_++ = ' ';
        *at_++ = letter;
        for (const Crossing& point : points) {
            at_ = grid_.write(at_, point.x);
            *at_++ = ' ';
            at_ = grid_.write(at_, point.y);
            *at_++ = ' ';
        }
        if (points.size() > 0) --at_;
    }

    void flush() {
        text_.append(buffer_, static_cast<size_t>(at_ - buffer_));
        at_ = buffer_;
    }

    const Grid& grid_;
    std::string text_;
    char buffer_[2048];  // what is not yet in the text: most paths are, when it is made, in one piece
    char* at_ = buffer_;
    Crossing current_;
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
        at = grid.write(at, grid.linesTo(point.x));
        *at++ = ',';
        at = grid.write(at, grid.linesTo(point.y));
        text.append(piece, static_cast<size_t>(at - piece));
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
