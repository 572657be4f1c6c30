#include "host/preview/PreviewStyle.h"

#include <QColor>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>
#include <algorithm>
#include <optional>

namespace tzhost {
namespace {

// Wider than any picture, and still a width that Qt can draw.
constexpr double kWidestPen = 100'000.0;

QString tagText(const TagRun& tags, TzTagId id) {
    const auto text = findTag(tags, id);
    return text ? QString::fromUtf8(text->data(), static_cast<int>(text->size())).trimmed() : QString();
}

// The number that a text starts with: "2.5px" is 2.5.
std::optional<double> leadingNumber(const QString& text) {
    // Text can be very long, and each attempt below takes time in proportion.
    constexpr qsizetype kLongest = 64;
    const auto longest = static_cast<int>(std::min<qsizetype>(text.size(), kLongest));
    int length = 0;
    while (length < longest && QStringLiteral("+-.0123456789eE").contains(text.at(length))) ++length;
    for (; length > 0; --length) {
        bool ok = false;
        const double number = text.left(length).toDouble(&ok);
        if (ok) return number;
    }
    return std::nullopt;
}

// A fraction from 0 to 1: "0.5" or "50%".
double share(const QString& text) {
    const std::optional<double> number = leadingNumber(text);
    if (!number) return 1.0;
    return std::clamp(text.endsWith(QLatin1Char('%')) ? *number / 100.0 : *number, 0.0, 1.0);
}

// "rgb(255, 0, 50%)" and "rgb: 1 0 0.5".
QColor componentColour(const QString& text) {
    const bool unitRange = text.startsWith(QLatin1String("rgb:"));
    QString list = text.mid(4);
    list.replace(QLatin1Char(','), QLatin1Char(' ')).remove(QLatin1Char(')'));
    const QStringList parts = list.simplified().split(QLatin1Char(' '));
    if (parts.size() != 3) return {};
    QVector<double> components;
    for (const QString& part : parts) {
        const double number = leadingNumber(part).value_or(0.0);
        const double whole = unitRange ? 1.0 : part.endsWith(QLatin1Char('%')) ? 100.0 : 255.0;
        components.push_back(std::clamp(number / whole, 0.0, 1.0));
    }
    return QColor::fromRgbF(components[0], components[1], components[2]);
}

// A length in scene units: a number, its absolute unit if it has one taken as metres.
std::optional<double> sceneLength(const QString& text) {
    const std::optional<double> number = leadingNumber(text);
    if (!number) return std::nullopt;
    static const QHash<QString, double> kMetres = {
        {QStringLiteral("mm"), 0.001},
        {QStringLiteral("cm"), 0.01},
        {QStringLiteral("in"), 0.0254},
        {QStringLiteral("pt"), 0.0254 / 72},
        {QStringLiteral("pc"), 0.0254 * 12 / 72},
    };
    return *number * kMetres.value(text.right(2), 1.0);
}

// The id that "url(#id)" refers to; empty for other paint.
QString reference(const QString& text) {
    const auto end = text.indexOf(QLatin1Char(')'));
    if (!text.startsWith(QLatin1String("url(")) || end < 0) return {};
    QString id = text.mid(4, end - 4).trimmed();
    id.remove(QLatin1Char('"')).remove(QLatin1Char('\''));
    return id.mid(id.startsWith(QLatin1Char('#')) ? 1 : 0);
}

QColor withOpacity(QColor colour, double opacity) {
    colour.setAlphaF(colour.alphaF() * opacity);
    return colour;
}

// The gradient with the opacity of each stop multiplied.
QBrush withOpacity(const QBrush& brush, double opacity) {
    if (opacity >= 1.0) return brush;
    QGradient gradient = *brush.gradient();
    QGradientStops stops = gradient.stops();
    for (auto& stop : stops) stop.second = withOpacity(stop.second, opacity);
    gradient.setStops(stops);
    return QBrush(gradient);
}

// A paint: no brush for "none", `absent` for an empty or unknown text.
QBrush paint(const QString& text, const QBrush& absent, const PreviewGradients& gradients, double opacity) {
    static const QColor kNeutral(128, 128, 128, 40);
    if (text.isEmpty()) return absent;
    if (text == QLatin1String("none") || text == QLatin1String("transparent")) return {};
    const QString id = reference(text);
    if (!id.isEmpty()) {
        const QBrush gradient = gradients.brush(id);
        return gradient.gradient() ? withOpacity(gradient, opacity) : QBrush(kNeutral);
    }
    if (text == QLatin1String("currentColor")) return withOpacity(QColor(Qt::black), opacity);
    const bool components = text.startsWith(QLatin1String("rgb(")) || text.startsWith(QLatin1String("rgb:"));
    const QColor colour = components ? componentColour(text) : QColor(text);
    return colour.isValid() ? QBrush(withOpacity(colour, opacity)) : absent;
}

// The dashes of a stroke in units of its width, as QPen wants them; empty when the list is no valid pattern.
QVector<double> dashes(const QString& text, double width, double scale) {
    QString list = text;
    list.replace(QLatin1Char(','), QLatin1Char(' '));
    const QStringList parts = list.simplified().split(QLatin1Char(' '));
    constexpr int kMostDashes = 256;
    if (text.isEmpty() || parts.size() > kMostDashes) return {};
    QVector<double> pattern;
    double sum = 0;
    for (const QString& part : parts) {
        const std::optional<double> length = sceneLength(part);
        if (!length || *length < 0) return {};
        pattern.push_back(*length / width);
        sum += pattern.back();
    }
    if (pattern.size() % 2 != 0) pattern += pattern;
    constexpr double kShortest = 0.5;  // in pixels; shorter patterns look like a solid line, and are slow
    return sum * width * scale > kShortest ? pattern : QVector<double>();
}

Qt::PenCapStyle capStyle(const QString& text) {
    if (text == QLatin1String("round")) return Qt::RoundCap;
    return text == QLatin1String("square") ? Qt::SquareCap : Qt::FlatCap;
}

Qt::PenJoinStyle joinStyle(const QString& text) {
    if (text == QLatin1String("round")) return Qt::RoundJoin;
    return text == QLatin1String("bevel") ? Qt::BevelJoin : Qt::SvgMiterJoin;
}

QPen strokePen(const TagRun& tags, const PreviewGradients& gradients, double scale) {
    const double opacity = share(tagText(tags, tzTag("LALF")));
    const QBrush brush = paint(tagText(tags, tzTag("LCOL")), {}, gradients, opacity);
    const double width = sceneLength(tagText(tags, tzTag("LWID"))).value_or(1.0);
    if (brush.style() == Qt::NoBrush || width <= 0 || scale <= 0) return QPen(Qt::NoPen);
    QPen pen(brush, std::min(width * scale, kWidestPen));
    pen.setCapStyle(capStyle(tagText(tags, tzTag("LCAP"))));
    pen.setJoinStyle(joinStyle(tagText(tags, tzTag("LJON"))));
    pen.setMiterLimit(std::max(1.0, leadingNumber(tagText(tags, tzTag("MLIM"))).value_or(4.0)));
    const QVector<double> pattern = dashes(tagText(tags, tzTag("DARR")), width, scale);
    if (!pattern.isEmpty()) {
        pen.setDashPattern(pattern);
        pen.setDashOffset(sceneLength(tagText(tags, tzTag("DOFF"))).value_or(0.0) / width);
    }
    return pen;
}

}  // namespace

ShapeStyle readStyle(const TagRun& tags, const PreviewGradients& gradients, double scale) {
    ShapeStyle style;
    const double fillOpacity = share(tagText(tags, tzTag("FILO")));
    const QBrush absent = withOpacity(QColor(Qt::black), fillOpacity);
    style.brush = paint(tagText(tags, tzTag("FILL")), absent, gradients, fillOpacity);
    style.pen = strokePen(tags, gradients, scale);
    if (tagText(tags, tzTag("FILR")) == QLatin1String("evenodd")) style.fillRule = Qt::OddEvenFill;
    style.opacity = share(tagText(tags, tzTag("OPAC")));
    return style;
}

}  // namespace tzhost
