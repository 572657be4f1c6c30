#include "normalize/paint/EffectRegion.h"

#include <algorithm>

#include "normalize/convert/Conversion.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

constexpr double kMostPages = 2.0;  // that a region reaches beyond the page on each side

bool isTurned(const Matrix& matrix) {  // otherwise than by quarters
    return matrix.isTurned() && (matrix.a != 0.0 || matrix.d != 0.0);
}

}  // namespace

std::optional<Box> wholeRegion(const SourceElement& element, Name units, const Place& place,
                               const std::optional<Box>& box) {
    const QStringView unitsText = element.attribute(units);
    const bool isOfBox = unitsText != u"userSpaceOnUse";
    if (isOfBox && !box) return std::nullopt;
    const auto value = [&](Name name, Axis axis, double start, double whole, double initial) {
        const QStringView text = element.attribute(name);
        if (isOfBox) return start + readShare(text).value_or(initial) * whole;
        return readLength(text, axis, place.viewport, place.style.fontSize())
            .value_or(initial * place.viewport.extent(axis));
    };
    const Box unit = box.value_or(Box());
    const double x = value(Name::kX, Axis::kHorizontal, unit.left, unit.width(), -0.1);
    const double y = value(Name::kY, Axis::kVertical, unit.top, unit.height(), -0.1);
    const double width = value(Name::kWidth, Axis::kHorizontal, 0.0, unit.width(), 1.2);
    const double height = value(Name::kHeight, Axis::kVertical, 0.0, unit.height(), 1.2);
    if (!(width > 0.0 && height > 0.0)) return std::nullopt;
    return mapped(Box{x, y, x + width, y + height}, place.ctm);
}

std::optional<Box> effectRegion(Conversion& conversion, const SourceElement& element, Name units,
                                const Place& place, const std::optional<Box>& box) {
    const std::optional<Box> region = wholeRegion(element, units, place, box);
    if (!region) return std::nullopt;
    if (isTurned(place.ctm) && (element.has(Name::kX) || element.has(Name::kWidth)))
        addNote(conversion, NoteCode::kApproximated, element,
                QStringLiteral("its region no longer turns with the object"));
    const Box& page = conversion.page;
    const Box most = {page.left - kMostPages * page.width(), page.top - kMostPages * page.height(),
                      page.right + kMostPages * page.width(), page.bottom + kMostPages * page.height()};
    const std::optional<Box> seen = intersection(*region, most);
    return seen && seen->hasArea() ? seen : std::nullopt;
}

void setRegion(OutputElement& out, const char* units, const Box& region) {
    out.set(units, "userSpaceOnUse");
    out.set("x", shortNumber(region.left));
    out.set("y", shortNumber(region.top));
    out.set("width", shortNumber(region.width()));
    out.set("height", shortNumber(region.height()));
}

}  // namespace tznormalize
