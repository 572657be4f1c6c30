// One reader object per text, one small function per kind of command.
#include "normalize/text/PathData.h"

#include "normalize/geometry/Arc.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

class PathReader {
  public:
    PathReader(QStringView text, Path& path) : cursor_(text), path_(path) {}

    // Whether the text was read to its end.
    bool read() {
        cursor_.skipBlanks();
        if (cursor_.atEnd()) return true;
        if (cursor_.peek() != u'M' && cursor_.peek() != u'm') return false;
        while (!cursor_.atEnd()) {
            const char16_t letter = cursor_.peek();
            cursor_.next();
            cursor_.skipBlanks();
            if (!readCommand(letter)) return false;
            cursor_.skipBlanks();
        }
        return true;
    }

  private:
    // Which control point a smooth command reflects.
    enum class Family : uint8_t { kNone, kCubic, kQuadratic };

    bool readCommand(char16_t letter) {
        const auto kind = static_cast<char16_t>(letter & ~0x20);  // upper case
        isRelative_ = kind != letter;
        switch (kind) {
            case u'M':
                return readMove();
            case u'Z':
                return readClosing();
            case u'L':
                return repeat([this] { return readLine(); }, Family::kNone);
            case u'H':
                return repeat([this] { return readHorizontal(); }, Family::kNone);
            case u'V':
                return repeat([this] { return readVertical(); }, Family::kNone);
            case u'C':
                return repeat([this] { return readCurve(); }, Family::kCubic);
            case u'S':
                return repeat([this] { return readSmoothCurve(); }, Family::kCubic);
            case u'Q':
                return repeat([this] { return readQuadratic(); }, Family::kQuadratic);
            case u'T':
                return repeat([this] { return readSmoothQuadratic(); }, Family::kQuadratic);
            case u'A':
                return repeat([this] { return readArc(); }, Family::kNone);
            default:
                return false;
        }
    }

    // Carries out a command with one set of numbers after the other.
    template <typename Command>
    bool repeat(Command command, Family family) {
        do {
            if (!command()) return false;
            family_ = family;
        } while (isMoreToCome());
        return true;
    }

    // Whether another set of numbers follows. A comma says so, too: one before a letter is a fault.
    bool isMoreToCome() {
        if (cursor_.skipSeparator()) return true;
        const char16_t c = cursor_.peek();
        return (c >= u'0' && c <= u'9') || c == u'-' || c == u'.' || c == u'+';
    }

    // Numbers of one set, with separators between them.
    template <typename... Numbers>
    bool readNumbers(double& first, Numbers&... others) {
        if (!cursor_.readNumber(first)) return false;
        return (... && (cursor_.skipSeparator(), cursor_.readNumber(others)));
    }
    template <typename... Points>
    bool readPoints(Points&... points) {
        bool isFirst = true;
        const auto readPoint = [&](Point& point) {
            if (!isFirst) cursor_.skipSeparator();
            isFirst = false;
            if (!readNumbers(point.x, point.y)) return false;
            if (isRelative_) point = point + current_;
            return true;
        };
        return (... && readPoint(points));
    }

    bool readMove() {
        Point point;
        if (!readPoints(point)) return false;
        start_ = current_ = point;
        isOpen_ = false;
        isMoved_ = true;
        family_ = Family::kNone;
        return !isMoreToCome() || repeat([this] { return readLine(); }, Family::kNone);
    }

    bool readClosing() {
        if (isMoved_) open();  // "M5 5z" is a dot, if caps show it
        if (isOpen_) path_.close();
        isOpen_ = false;
        current_ = start_;
        family_ = Family::kNone;
        return true;
    }

    bool readLine() {
        Point end;
        if (!readPoints(end)) return false;
        lineTo(end);
        return true;
    }

    bool readHorizontal() {
        double x = 0.0;
        if (!cursor_.readNumber(x)) return false;
        lineTo({isRelative_ ? current_.x + x : x, current_.y});
        return true;
    }

    bool readVertical() {
        double y = 0.0;
        if (!cursor_.readNumber(y)) return false;
        lineTo({current_.x, isRelative_ ? current_.y + y : y});
        return true;
    }

    bool readCurve() {
        Point control1;
        Point control2;
        Point end;
        if (!readPoints(control1, control2, end)) return false;
        curveTo(control1, control2, end);
        return true;
    }

    bool readSmoothCurve() {
        Point control2;
        Point end;
        if (!readPoints(control2, end)) return false;
        curveTo(reflectedControl(Family::kCubic), control2, end);
        return true;
    }

    bool readQuadratic() {
        Point control;
        Point end;
        if (!readPoints(control, end)) return false;
        quadraticTo(control, end);
        return true;
    }

    bool readSmoothQuadratic() {
        Point end;
        if (!readPoints(end)) return false;
        quadraticTo(reflectedControl(Family::kQuadratic), end);
        return true;
    }

    bool readArc() {
        Arc arc{};
        if (!readNumbers(arc.rx, arc.ry, arc.rotation)) return false;
        cursor_.skipSeparator();
        if (!cursor_.readFlag(arc.isLarge)) return false;
        cursor_.skipSeparator();
        if (!cursor_.readFlag(arc.isSweep)) return false;
        cursor_.skipSeparator();
        if (!readPoints(arc.end)) return false;
        open();
        appendArc(path_, current_, arc);
        current_ = arc.end;
        return true;
    }

    Point reflectedControl(Family family) const {
        return family_ == family ? current_ + (current_ - control_) : current_;
    }

    // A sub-path begins with what is drawn, so that moves of which nothing comes leave nothing.
    void open() {
        if (!isOpen_) path_.moveTo(current_);
        isOpen_ = true;
        isMoved_ = false;
    }

    void lineTo(const Point& end) {
        open();
        path_.lineTo(end);
        current_ = end;
    }

    void curveTo(const Point& control1, const Point& control2, const Point& end) {
        open();
        path_.curveTo(control1, control2, end);
        control_ = control2;
        current_ = end;
    }

    void quadraticTo(const Point& control, const Point& end) {
        open();
        path_.curveTo(lerp(current_, control, 2.0 / 3), lerp(end, control, 2.0 / 3), end);
        control_ = control;
        current_ = end;
    }

    NumberCursor cursor_;
    Path& path_;
    bool isRelative_ = false;
    bool isOpen_ = false;   // the sub-path that begins at start_ has been begun
    bool isMoved_ = false;  // a move was read, and nothing after it yet
    Family family_ = Family::kNone;
    Point start_;
    Point current_;
    Point control_;
};

}  // namespace

Path readPathData(QStringView text, bool* isComplete) {
    Path path;
    path.reserve(static_cast<size_t>(text.size()) / 12, static_cast<size_t>(text.size()) / 8);
    const bool isRead = PathReader(text, path).read() || text.trimmed() == u"none";
    if (isComplete != nullptr) *isComplete = isRead;
    return path;
}

std::vector<Point> readPoints(QStringView text) {
    std::vector<Point> points;
    points.reserve(static_cast<size_t>(text.size()) / 8);
    NumberCursor cursor(text);
    cursor.skipBlanks();
    for (Point point; cursor.readNumber(point.x); cursor.skipSeparator()) {
        cursor.skipSeparator();
        if (!cursor.readNumber(point.y)) break;
        points.push_back(point);
    }
    return points;
}

}  // namespace tznormalize
