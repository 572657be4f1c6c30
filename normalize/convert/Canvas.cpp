#include "normalize/convert/Canvas.h"

#include <algorithm>
#include <cmath>

#include "normalize/convert/Walk.h"
#include "normalize/text/ViewBox.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {
namespace {

constexpr double kSmallestPage = 10.0;
constexpr double kLargestPage = 20'000.0;
constexpr double kSmallest = 1e-100;  // of what can be scaled up to a page
constexpr Viewport kUnknownViewport{100.0, 100.0};

struct Size {
    double width, height;
};

struct Layout {
    Matrix base;
    Size size;
    double pixel = 1.0;
};

// Decimals that six digits leave for coordinates on a page.
int decimalsFor(double longest) {
    return longest < 1000.0 ? 3 : longest < 10'000.0 ? 2 : 1;
}

Grid gridFor(double longest) {
    // Rounding may reach the next size.
    const Grid grid(decimalsFor(longest));
    return Grid(decimalsFor(grid.round(longest)));
}

// "width" or "height" in pixels; 0 when there is none, or none that can be told.
double extentOf(const SourceDocument& source, const Style& style, Name name, Axis axis,
                const std::optional<ViewBox>& box) {
    const QStringView text = source.root().attribute(name);
    if (!box && text.endsWith(u'%')) return 0.0;
    const Viewport whole = box ? Viewport{box->width, box->height} : kUnknownViewport;
    return std::max(0.0, readLength(text, axis, whole, style.fontSize()).value_or(0.0));
}

// Rounds off what computing has added: a second normalization has to find the same.
double withoutNoise(double value) {
    constexpr double kFine = 1e9;
    return std::round(value * kFine) / kFine;
}

std::optional<Layout> declaredLayout(const SourceDocument& source, const Style& style) {
    const SourceElement& root = source.root();
    const std::optional<ViewBox> box = readViewBox(root.attribute(Name::kViewBox));
    Size size{extentOf(source, style, Name::kWidth, Axis::kHorizontal, box),
              extentOf(source, style, Name::kHeight, Axis::kVertical, box)};
    if (!box) {
        if (size.width <= 0.0 || size.height <= 0.0) return std::nullopt;
        return Layout{Matrix(), size};
    }
    if (size.width <= 0.0 && size.height <= 0.0) {
        size = {box->width, box->height};
    } else if (size.width <= 0.0) {
        size.width = size.height * box->width / box->height;
    } else if (size.height <= 0.0) {
        size.height = size.width * box->height / box->width;
    }
    const QStringView aspect = root.attribute(Name::kPreserveAspectRatio);
    const Matrix fitted = fitViewBox(*box, aspect, size.width, size.height);
    if (aspect.trimmed().startsWith(u"none")) return Layout{fitted, size};
    // Alike in both directions: what is left of it in units of the view box is a move.
    const double unit = fitted.a;
    return Layout{Matrix::translation(withoutNoise(fitted.e / unit), withoutNoise(fitted.f / unit)),
                  {size.width / unit, size.height / unit},
                  1.0 / unit};
}

// A page around all that is drawn.
Layout drawnLayout(const SourceDocument& source, const Cascade& styles, const QString& fileName,
                   const Style& style) {
    Notes unused;
    Conversion conversion(source, styles, fileName, unused, {}, {}, Grid(3));
    Target target;
    target.isDrawn = true;
    target.isMeasured = true;
    OutputElement nothing("g");
    convertChildren(conversion, source.root(), {{}, style, kUnknownViewport}, nothing, target);
    const Box box = target.box.value_or(Box{0.0, 0.0, 100.0, 100.0});
    return {Matrix::translation(-box.left, -box.top), {box.width(), box.height()}};
}

// Whether what lies behind the point shows on no level of an image.
bool isWhole(double side) {
    constexpr double kUnseen = 1e-5;
    return std::abs(side - std::round(side)) <= kUnseen * side;
}

double factorOf(const Size& size, double longest, WrittenFor writtenFor) {
    double factor = 1.0;
    while (longest * factor < kSmallestPage) factor *= 10.0;
    while (longest * factor > kLargestPage) factor /= 10.0;
    if (writtenFor == WrittenFor::kRoundTrip) return factor;
    while (10.0 * longest * factor <= kLargestPage &&
           !(isWhole(size.width * factor) && isWhole(size.height * factor)))
        factor *= 10.0;
    return factor;
}

// Whether numbers came of it that a drawing can have: a size of "1e308mm" is none.
bool isSound(const Layout& layout) {
    constexpr double kLargest = 1e12;
    return layout.base.isFinite() && layout.size.width < kLargest && layout.size.height < kLargest;
}

}  // namespace

Canvas canvasOf(const SourceDocument& source, const Cascade& styles, const QString& fileName,
                WrittenFor writtenFor) {
    const Style style = styles.computed(source.root(), Style(), kUnknownViewport);
    std::optional<Layout> declared = declaredLayout(source, style);
    Layout layout = declared && isSound(*declared) ? *declared : drawnLayout(source, styles, fileName, style);
    if (!isSound(layout)) layout = {Matrix(), {kUnknownViewport.width, kUnknownViewport.height}};
    const double longest = std::max({layout.size.width, layout.size.height, kSmallest});
    const double factor = factorOf(layout.size, longest, writtenFor);
    const Grid grid = gridFor(longest * factor);
    const double width = std::max(grid.round(layout.size.width * factor), grid.step());
    const double height = std::max(grid.round(layout.size.height * factor), grid.step());
    const std::optional<ViewBox> box = readViewBox(source.root().attribute(Name::kViewBox));
    return {factor == 1.0 ? layout.base : Matrix::scaling(factor, factor) * layout.base,
            width,
            height,
            box ? Viewport{box->width, box->height} : Viewport{layout.size.width, layout.size.height},
            grid,
            factor * layout.pixel};
}

}  // namespace tznormalize
