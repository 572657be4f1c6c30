// Tested by tests/text/NumbersTest.cpp.
#include "svg/text/Length.h"

#include <QStringView>
#include <array>

#include "svg/text/NumberReader.h"

namespace tzsvg {
namespace {

struct Suffix {
    QStringView text;
    double factor;
};

// By unit code. Absolute units in metres beside user units is a deliberate mixture, and so are the rounded
// literals: existing scenes were made with them. Length/units pins them.
constexpr std::array<Suffix, 8> kSuffixes = {{
    {u"em", 1.0},
    {u"ex", 1.0},
    {u"px", 1.0},
    {u"pt", 0.000352777778},
    {u"pc", 0.00423333333},
    {u"cm", 0.01},
    {u"mm", 0.001},
    {u"in", 0.0254},
}};

}  // namespace

void LengthContext::setPercentReferences(double width, double height) {
    horizontalPercent_ = width * 0.01;
    verticalPercent_ = height * 0.01;
}

void LengthContext::setPercentReferencesFromViewBox(QStringView viewBox) {
    float x = 0;
    float y = 0;
    float width = 0;
    float height = 0;
    if (scanText(viewBox.toUtf8().constData(), "%f %f %f %f", &x, &y, &width, &height) != 4) return;
    setPercentReferences(width, height);
}

double convertUnit(QStringView number, Unit unit, Axis axis, const LengthContext& context) {
    const auto code = static_cast<unsigned>(unit);
    if (code > static_cast<unsigned>(Unit::kPercent)) return 0.0;
    const double factor = unit == Unit::kPercent ? context.percent(axis) : kSuffixes[code].factor;
    return toDouble(number) * static_cast<double>(context.scale()) * factor;
}

double parseLength(QStringView text, Axis axis, const LengthContext& context) {
    const QStringView trimmed = text.trimmed();
    if (trimmed.isEmpty()) return 0.0;
    const QChar last = trimmed.back();
    if (last.isDigit()) return toDouble(trimmed) * static_cast<double>(context.scale());
    if (last == u'%') return convertUnit(trimmed.chopped(1), Unit::kPercent, axis, context);
    for (unsigned code = 0; code < kSuffixes.size(); ++code) {
        if (!trimmed.endsWith(kSuffixes[code].text)) continue;
        return convertUnit(trimmed.chopped(2), static_cast<Unit>(code), axis, context);
    }
    return 0.0;
}

}  // namespace tzsvg
