// Fuzz target: the short texts of attributes. The first line is a property's name, the rest a style that it
// is looked up in; both are read as point lists and lengths, too.
#include <QVector>
#include <cstdlib>

#include "fuzz/FuzzHost.h"
#include "svg/text/Length.h"
#include "svg/text/PointList.h"
#include "svg/text/StyleProperty.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tzsvg;
    const std::string_view text = tzfuzz::asText(data, size);
    const QString all = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
    const auto lineEnd = all.indexOf(QLatin1Char('\n'));
    const QString property = all.left(lineEnd);
    const QString style = all.mid(lineEnd + 1);

    QString value;
    const bool asked = GetStyleProperty(style, property, value);
    if (asked != (!style.isEmpty() && !property.isEmpty())) std::abort();
    if (!value.isEmpty() && (value.contains(QLatin1Char(';')) || !style.contains(value))) std::abort();

    LengthContext lengths;
    lengths.setPercentReferencesFromViewBox(style);
    for (const Axis axis : {Axis::kHorizontal, Axis::kVertical}) parseLength(property, axis, lengths);
    QVector<QPointF> points;
    if (!readPointList(style, points) && !points.isEmpty()) std::abort();
    return 0;
}
