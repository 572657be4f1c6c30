// One reader object per text, one small function per command. Tested by tests/text/PathDataTest.cpp.
#include "svg/text/PathData.h"

#include <QPointF>

#include "svg/text/Arc.h"
#include "svg/text/NumberReader.h"

namespace tzsvg {
namespace {

constexpr char16_t kNoCommand = u'N';

class PathReader {
  public:
    PathReader(QStringView text, QPainterPath& path) : text_(text), path_(path) {}

    bool read() {
        while (position_ < text_.size()) {
            const QChar next = text_.at(position_++);
            if (isBlank(next)) continue;
            char16_t command = next.unicode();
            if (next.isDigit() || next == u'-' || next == u'.') {
                --position_;
                command = repeatedCommand();
                if (!takesNumbers(command)) return false;  // nothing would move past the number
            }
            if (!carryOut(command)) return false;
            previous_ = command;
        }
        return true;
    }

  private:
    // The command that a further set of numbers belongs to.
    char16_t repeatedCommand() const {
        if (previous_ == u'M') return u'L';
        if (previous_ == u'm') return u'l';
        return previous_;
    }

    static bool takesNumbers(char16_t command) {
        return QStringView(u"MmLlHhVvCcSsQqTtAa").contains(command);
    }

    bool carryOut(char16_t command) {
        const bool relative = QChar(command).isLower();
        const QPointF origin = relative ? current_ : QPointF();
        switch (command) {
            case u'M':
            case u'm':
                return moveTo(origin);
            case u'L':
            case u'l':
                return lineTo(origin);
            case u'H':
            case u'h':
                return horizontalTo(origin);
            case u'V':
            case u'v':
                return verticalTo(origin);
            case u'C':
            case u'c':
                return cubicTo(origin);
            case u'S':
            case u's':
                return smoothCubicTo(origin);
            case u'Q':
            case u'q':
                return quadraticTo(origin);
            case u'T':
            case u't':
                return smoothQuadraticTo(origin);
            case u'A':
            case u'a':
                return arcTo(origin);
            case u'Z':
            case u'z':
                // "z" leaves the current point where it was: a relative command after it starts at the last
                // point drawn, not at the sub-path's start. Meant so, stored scenes have their later
                // sub-paths there; PathData/relativeAfterClose pins it.
                path_.closeSubpath();
                return true;
            default:
                return true;  // letters that are no command are skipped, one at a time
        }
    }

    // Commas are pure separators: blanks wherever they stand.
    static bool isBlank(QChar c) { return c.isSpace() || c == u','; }

    void skipBlanks() {
        while (position_ < text_.size() && isBlank(text_.at(position_))) ++position_;
    }

    bool number(double& value) {
        skipBlanks();
        return scanNumber(text_, position_, value);
    }

    bool point(const QPointF& origin, QPointF& out) {
        double x = 0.0;
        double y = 0.0;
        if (!number(x) || !number(y)) return false;
        out = origin + QPointF(x, y);
        return fitsPainterPath(out);
    }

    bool flag(bool& value) {
        skipBlanks();
        if (position_ >= text_.size()) return false;
        const QChar c = text_.at(position_);
        if (c != u'0' && c != u'1') return false;
        value = c == u'1';
        ++position_;
        return true;
    }

    // The first control point of a smooth segment: the last control point reflected about the current point
    // when the previous command was of the same family, else the current point.
    bool reflected(QStringView family, QPointF& control) const {
        control = family.contains(previous_) ? current_ + (current_ - lastControl_) : current_;
        return fitsPainterPath(control);
    }

    bool moveTo(const QPointF& origin) {
        QPointF end;
        if (!point(origin, end)) return false;
        path_.moveTo(end);
        current_ = end;
        return true;
    }

    bool lineTo(const QPointF& origin) {
        QPointF end;
        return point(origin, end) && lineToPoint(end);
    }

    bool horizontalTo(const QPointF& origin) {
        double x = 0.0;
        return number(x) && lineToPoint(QPointF(origin.x() + x, current_.y()));
    }

    bool verticalTo(const QPointF& origin) {
        double y = 0.0;
        return number(y) && lineToPoint(QPointF(current_.x(), origin.y() + y));
    }

    bool lineToPoint(const QPointF& end) {
        if (!fitsPainterPath(end)) return false;
        path_.lineTo(end);
        current_ = end;
        return true;
    }

    bool cubicTo(const QPointF& origin) {
        QPointF control1;
        return point(origin, control1) && cubicFrom(control1, origin);
    }

    bool smoothCubicTo(const QPointF& origin) {
        QPointF control1;
        return reflected(u"SsCc", control1) && cubicFrom(control1, origin);
    }

    bool cubicFrom(const QPointF& control1, const QPointF& origin) {
        QPointF control2;
        QPointF end;
        if (!point(origin, control2) || !point(origin, end)) return false;
        path_.cubicTo(control1, control2, end);
        lastControl_ = control2;
        current_ = end;
        return true;
    }

    bool quadraticTo(const QPointF& origin) {
        QPointF control;
        return point(origin, control) && quadraticFrom(control, origin);
    }

    bool smoothQuadraticTo(const QPointF& origin) {
        QPointF control;
        return reflected(u"QqTt", control) && quadraticFrom(control, origin);
    }

    bool quadraticFrom(const QPointF& control, const QPointF& origin) {
        QPointF end;
        if (!point(origin, end)) return false;
        // What the painter path makes of it, a cubic, has to fit too.
        if (!fitsPainterPath((path_.currentPosition() + 2 * control) / 3) ||
            !fitsPainterPath((end + 2 * control) / 3))
            return false;
        path_.quadTo(control, end);
        lastControl_ = control;
        current_ = end;
        return true;
    }

    bool arcTo(const QPointF& origin) {
        Arc arc{};
        if (!number(arc.rx) || !number(arc.ry) || !number(arc.rotation) || !flag(arc.large) ||
            !flag(arc.sweep) || !point(origin, arc.end)) {
            return false;
        }
        if (!appendArc(current_, arc, path_)) return false;
        current_ = arc.end;
        return true;
    }

    const QStringView text_;
    QPainterPath& path_;
    qsizetype position_ = 0;
    QPointF current_;
    QPointF lastControl_;
    char16_t previous_ = kNoCommand;
};

}  // namespace

bool parsePathData(QStringView text, QPainterPath& path) {
    path = {};
    if (PathReader(text, path).read()) return true;
    path = {};
    return false;
}

}  // namespace tzsvg
