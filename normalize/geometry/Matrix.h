// Points and affine matrices.
#pragma once

#include <optional>

namespace tznormalize {

constexpr double kPi = 3.14159265358979323846;

struct Point {
    double x = 0.0;
    double y = 0.0;
};

inline Point operator+(const Point& p, const Point& q) {
    return {p.x + q.x, p.y + q.y};
}
inline Point operator-(const Point& p, const Point& q) {
    return {p.x - q.x, p.y - q.y};
}
inline bool operator==(const Point& p, const Point& q) {
    return p.x == q.x && p.y == q.y;
}
inline bool operator!=(const Point& p, const Point& q) {
    return !(p == q);
}
inline Point lerp(const Point& p, const Point& q, double t) {
    return {p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t};
}
double distance(const Point& p, const Point& q);

// As SVG's matrix(a b c d e f): x' = a x + c y + e, y' = b x + d y + f.
struct Matrix {
    double a = 1.0, b = 0.0, c = 0.0, d = 1.0, e = 0.0, f = 0.0;

    static Matrix translation(double x, double y) { return {1.0, 0.0, 0.0, 1.0, x, y}; }
    static Matrix scaling(double x, double y) { return {x, 0.0, 0.0, y, 0.0, 0.0}; }
    static Matrix rotation(double degrees);  // exact for multiples of 90

    Point map(const Point& p) const { return {a * p.x + c * p.y + e, b * p.x + d * p.y + f}; }
    double determinant() const { return a * d - b * c; }
    bool isIdentity() const { return a == 1.0 && b == 0.0 && c == 0.0 && d == 1.0 && e == 0.0 && f == 0.0; }
    bool isFinite() const;
    bool isFlat() const;  // maps the plane onto a line or a point
    bool isTurned() const { return b != 0.0 || c != 0.0; }

    std::optional<Matrix> inverse() const;  // nothing when it is flat

    // The greatest and the least factor by which lengths grow.
    struct Stretches {
        double most, least;
    };
    Stretches stretches() const;
    double areaScale() const;  // root of the factor by which areas grow
    bool isEven() const;       // grows lengths in all directions alike, within 3 %: a stroke stays a stroke
};

// `n` first, then `m`.
Matrix operator*(const Matrix& m, const Matrix& n);
bool operator==(const Matrix& m, const Matrix& n);
inline bool operator!=(const Matrix& m, const Matrix& n) {
    return !(m == n);
}

}  // namespace tznormalize
