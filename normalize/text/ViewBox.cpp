#include "normalize/text/ViewBox.h"

#include <algorithm>

#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

QStringView nextWord(QStringView& text) {
    text = text.trimmed();
    qsizetype size = 0;
    while (size < text.size() && !isBlank(text[size].unicode())) ++size;
    const QStringView word = text.left(size);
    text = text.mid(size);
    return word;
}

// How much of the room that is left over lies before the box: "Min", "Mid" or "Max".
double shareBefore(QStringView word) {
    if (word == u"Min") return 0.0;
    return word == u"Max" ? 1.0 : 0.5;
}

}  // namespace

std::optional<ViewBox> readViewBox(QStringView text) {
    const std::vector<double> numbers = readNumbers(text);
    if (numbers.size() < 4 || numbers[2] <= 0.0 || numbers[3] <= 0.0) return std::nullopt;
    return ViewBox{numbers[0], numbers[1], numbers[2], numbers[3]};
}

Matrix fitViewBox(const ViewBox& box, QStringView aspect, double width, double height) {
    QStringView align = nextWord(aspect);
    if (align == u"defer") align = nextWord(aspect);
    const bool isSlice = nextWord(aspect) == u"slice";
    const double scaleX = width / box.width;
    const double scaleY = height / box.height;
    const Matrix toOrigin = Matrix::translation(-box.x, -box.y);
    if (align == u"none") return Matrix::scaling(scaleX, scaleY) * toOrigin;
    const double scale = isSlice ? std::max(scaleX, scaleY) : std::min(scaleX, scaleY);
    const double left = (width - box.width * scale) * shareBefore(align.mid(1, 3));  // "xMidYMax"
    const double top = (height - box.height * scale) * shareBefore(align.mid(5, 3));
    return Matrix::translation(left, top) * Matrix::scaling(scale, scale) * toOrigin;
}

}  // namespace tznormalize
