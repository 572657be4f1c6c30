#include "normalize/geometry/Matrix.h"

#include <cmath>

namespace tznormalize {
namespace {

constexpr double kFlatDeterminant = 1e-18;
constexpr double kLeastEvenness = 0.97;

}  // namespace

double distance(const Point& p, const Point& q) {
    return std::hypot(q.x - p.x, q.y - p.y);
}

Matrix Matrix::rotation(double degrees) {
    const double quarters = degrees / 90;
    double sine = std::sin(degrees * kPi / 180);
    double cosine = std::cos(degrees * kPi / 180);
    if (quarters == std::floor(quarters)) {
        sine = std::round(sine);
        cosine = std::round(cosine);
    }
    return {cosine, sine, -sine, cosine, 0.0, 0.0};
}

bool Matrix::isFinite() const {
    return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d) && std::isfinite(e) &&
           std::isfinite(f);
}

bool Matrix::isFlat() const {
    return !(std::abs(determinant()) >= kFlatDeterminant);  // not-a-number is flat, too
}

std::optional<Matrix> Matrix::inverse() const {
    if (isFlat()) return std::nullopt;
    const double area = determinant();
    const Matrix m{d / area, -b / area, -c / area, a / area, 0.0, 0.0};
    const Point origin = m.map({-e, -f});
    return Matrix{m.a, m.b, m.c, m.d, origin.x, origin.y};
}

// A matrix is a turn with an even scale plus a reflection with an even scale: their scales add up in one
// direction and work against each other in the one across.
Matrix::Stretches Matrix::stretches() const {
    const double turn = std::hypot((a + d) / 2, (b - c) / 2);
    const double reflection = std::hypot((a - d) / 2, (b + c) / 2);
    return {turn + reflection, std::abs(turn - reflection)};
}

double Matrix::areaScale() const {
    return std::sqrt(std::abs(determinant()));
}

bool Matrix::isEven() const {
    const Stretches s = stretches();
    return s.least > s.most * kLeastEvenness;
}

Matrix operator*(const Matrix& m, const Matrix& n) {
    return {m.a * n.a + m.c * n.b, m.b * n.a + m.d * n.b,       m.a * n.c + m.c * n.d,
            m.b * n.c + m.d * n.d, m.a * n.e + m.c * n.f + m.e, m.b * n.e + m.d * n.f + m.f};
}

bool operator==(const Matrix& m, const Matrix& n) {
    return m.a == n.a && m.b == n.b && m.c == n.c && m.d == n.d && m.e == n.e && m.f == n.f;
}

}  // namespace tznormalize
