// A path as absolute moves, lines, cubic curves and closings.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "normalize/geometry/Box.h"
#include "normalize/geometry/Matrix.h"

namespace tznormalize {

enum class Verb : uint8_t { kMove, kLine, kCurve, kClose };

// How many points stand with a verb: a curve's are its two controls and its end.
constexpr size_t pointCount(Verb verb) {
    return verb == Verb::kCurve ? 3 : verb == Verb::kClose ? 0 : 1;
}

// Verbs and their points, one after another. Every sub-path begins with a move; after a closing comes a move
// or nothing.
class Path {
  public:
    struct Segment {
        Verb verb;
        const Point* points;  // pointCount(verb) of them

        Point end() const { return points[pointCount(verb) - 1]; }  // not of a closing
    };
    class Iterator {
      public:
        Iterator(const Verb* verb, const Point* point) : verb_(verb), point_(point) {}
        Segment operator*() const { return {*verb_, point_}; }
        Iterator& operator++() {
            point_ += pointCount(*verb_++);
            return *this;
        }
        bool operator==(const Iterator& other) const { return verb_ == other.verb_; }
        bool operator!=(const Iterator& other) const { return verb_ != other.verb_; }

      private:
        const Verb* verb_;
        const Point* point_;
    };

    void moveTo(const Point& point) { add(Verb::kMove, point); }
    void lineTo(const Point& point) { add(Verb::kLine, point); }
    void curveTo(const Point& control1, const Point& control2, const Point& end) {
        add(Verb::kCurve, control1);
        points_.push_back(control2);
        points_.push_back(end);
    }
    void close() { verbs_.push_back(Verb::kClose); }
    void append(const Verb* verbs, size_t verbCount, const Point* points, size_t pointCount);
    void append(const Path& path);
    void reserve(size_t verbs, size_t points);

    bool isEmpty() const { return verbs_.empty(); }
    size_t size() const { return verbs_.size(); }
    const std::vector<Verb>& verbs() const { return verbs_; }
    const std::vector<Point>& points() const { return points_; }
    Iterator begin() const { return {verbs_.data(), points_.data()}; }
    Iterator end() const { return {verbs_.data() + verbs_.size(), points_.data() + points_.size()}; }

    bool isFinite() const;
    bool hasCurves() const;
    bool isClosedPolygon() const;  // one sub-path of lines, closed
    bool coversArea() const;       // more than a line, and not all of one point: worth to be filled

    void map(const Matrix& matrix);
    Path mapped(const Matrix& matrix) const;

    // The box around all points, control points included; nothing for an empty path.
    std::optional<Box> controlsBox() const;

    // That of mapped(matrix).
    std::optional<Box> controlsBox(const Matrix& matrix) const;

    // The box of what the path covers, curves as they run: what objectBoundingBox means.
    std::optional<Box> tightBox() const;

  private:
    void add(Verb verb, const Point& point) {
        verbs_.push_back(verb);
        points_.push_back(point);
    }

    std::vector<Verb> verbs_;
    std::vector<Point> points_;
};

}  // namespace tznormalize
