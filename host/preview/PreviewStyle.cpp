#include "host/preview/PreviewStyle.h"

#include <QColor>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>
#include <algorithm>
#include <optional>

#include "host/preview/PreviewText.h"

namespace tzhost {
namespace {

// Wider than any picture, and still a width that Qt can draw.
constexpr double kWidestPen = 100'000.0;  // pixels

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

QColor withOpacity(QColor colour, double opacity) {
    colour.setAlphaF(colour.alphaF() * opacity);
    return colour;
}

// A paint: no brush for "none", `absent` for an empty or unknown text.
QBrush paint(const QString& text, const Properties& properties, const QBrush& absent,
             const PaintSource& source, double opacity) {
    static const QColor kNeutral(128, 128, 128, 40);
    if (text.isEmpty()) return absent;
    if (text == QLatin1String("none") || text == QLatin1String("transparent")) return {};
    const QString id = readReference(text);
    if (!id.isEmpty()) {
        QBrush brush = gradientBrush(source.definitions, id, source.place, opacity);
        if (brush.style() == Qt::NoBrush) {
            brush = source.pictures.patternBrush(id, source.place, source.pixels, opacity);
        }
        return brush.style() == Qt::NoBrush ? QBrush(kNeutral) : brush;
    }
    if (text == QLatin1String("currentColor")) {
        const QString& colour = properties[Property::kColor];
        const QBrush black = withOpacity(QColor(Qt::black), opacity);
        return colour == text ? black : paint(colour, properties, black, source, opacity);
    }
    const bool components = text.startsWith(QLatin1String("rgb(")) || text.startsWith(QLatin1String("rgb:"));
    const QColor colour = components ? componentColour(text) : QColor(text);
    return colour.isValid() ? QBrush(withOpacity(colour, opacity)) : absent;
}

// The dashes of a stroke in units of its width, as QPen wants them; empty when the list is no valid pattern.
QVector<double> dashes(const QString& text, double width, double pixels) {
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
    return sum * width * pixels > kShortest ? pattern : QVector<double>();
}

Qt::PenCapStyle capStyle(const QString& text) {
    if (text == QLatin1String("round")) return Qt::RoundCap;
    return text == QLatin1String("square") ? Qt::SquareCap : Qt::FlatCap;
}

Qt::PenJoinStyle joinStyle(const QString& text) {
    if (text == QLatin1String("round")) return Qt::RoundJoin;
    return text == QLatin1String("bevel") ? Qt::BevelJoin : Qt::SvgMiterJoin;
}

}  // namespace

QBrush fillBrush(const Properties& properties, const PaintSource& source) {
    const double opacity = readOpacity(properties[Property::kFillOpacity]);
    const QBrush absent = withOpacity(QColor(Qt::black), opacity);
    return paint(properties[Property::kFill], properties, absent, source, opacity);
}

QPen strokePen(const Properties& properties, const PaintSource& source) {
    const double opacity = readOpacity(properties[Property::kStrokeOpacity]);
    const double width = sceneLength(properties[Property::kStrokeWidth]).value_or(1.0);
    if (width <= 0 || source.units <= 0) return QPen(Qt::NoPen);
    const QBrush brush = paint(properties[Property::kStroke], properties, {}, source, opacity);
    if (brush.style() == Qt::NoBrush) return QPen(Qt::NoPen);
    QPen pen(brush, std::min(width * source.units, kWidestPen / source.pixels));
    pen.setCapStyle(capStyle(properties[Property::kCap]));
    pen.setJoinStyle(joinStyle(properties[Property::kJoin]));
    pen.setMiterLimit(std::max(1.0, leadingNumber(properties[Property::kMiterLimit]).value_or(4.0)));
    const QVector<double> pattern =
        dashes(properties[Property::kDashes], width, source.units * source.pixels);
    if (!pattern.isEmpty()) {
        pen.setDashPattern(pattern);
        pen.setDashOffset(sceneLength(properties[Property::kDashOffset]).value_or(0.0) / width);
    }
    return pen;
}

Qt::FillRule fillRule(const Properties& properties) {
    return properties[Property::kFillRule] == QLatin1String("evenodd") ? Qt::OddEvenFill : Qt::WindingFill;
}

}  // namespace tzhost
