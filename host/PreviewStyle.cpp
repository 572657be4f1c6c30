// See the header.
#include "host/PreviewStyle.h"

#include <QColor>
#include <QString>
#include <QStringList>
#include <QVector>
#include <algorithm>
#include <optional>

namespace tzhost {
namespace {

// Wider than any picture, and not too wide for the toolkit.
constexpr double kWidestPen = 100'000.0;

QString tagText(const TagRun& tags, TzTagId id) {
    const auto text = findTag(tags, id);
    return text ? QString::fromUtf8(text->data(), static_cast<int>(text->size())).trimmed() : QString();
}

// The number that a text starts with: "2.5px" is 2.5.
std::optional<double> leadingNumber(const QString& text) {
    int length = 0;
    while (length < text.size() && QStringLiteral("+-.0123456789eE").contains(text.at(length))) ++length;
    for (; length > 0; --length) {
        bool ok = false;
        const double number = text.left(length).toDouble(&ok);
        if (ok) return number;
    }
    return std::nullopt;
}

// A share of one: "0.5" or "50%".
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

// A paint: nothing for "none", `absent` where the text says nothing that is understood.
std::optional<QColor> paint(const QString& text, const std::optional<QColor>& absent) {
    static const QColor kNeutral(128, 128, 128, 110);
    if (text.isEmpty()) return absent;
    if (text == QLatin1String("none") || text == QLatin1String("transparent")) return std::nullopt;
    if (text.startsWith(QLatin1String("url("))) return kNeutral;
    if (text == QLatin1String("currentColor")) return QColor(Qt::black);
    const bool components = text.startsWith(QLatin1String("rgb(")) || text.startsWith(QLatin1String("rgb:"));
    const QColor colour = components ? componentColour(text) : QColor(text);
    return colour.isValid() ? colour : absent;
}

QColor withOpacity(QColor colour, double opacity) {
    colour.setAlphaF(colour.alphaF() * opacity);
    return colour;
}

Qt::PenCapStyle capStyle(const QString& text) {
    if (text == QLatin1String("round")) return Qt::RoundCap;
    return text == QLatin1String("square") ? Qt::SquareCap : Qt::FlatCap;
}

Qt::PenJoinStyle joinStyle(const QString& text) {
    if (text == QLatin1String("round")) return Qt::RoundJoin;
    return text == QLatin1String("bevel") ? Qt::BevelJoin : Qt::SvgMiterJoin;
}

QPen strokePen(const TagRun& tags, double scale) {
    const std::optional<QColor> colour = paint(tagText(tags, tzTag("LCOL")), std::nullopt);
    const double width = leadingNumber(tagText(tags, tzTag("LWID"))).value_or(1.0);
    if (!colour || width <= 0 || scale <= 0) return QPen(Qt::NoPen);
    QPen pen(withOpacity(*colour, share(tagText(tags, tzTag("LALF")))), std::min(width * scale, kWidestPen));
    pen.setCapStyle(capStyle(tagText(tags, tzTag("LCAP"))));
    pen.setJoinStyle(joinStyle(tagText(tags, tzTag("LJON"))));
    pen.setMiterLimit(std::max(1.0, leadingNumber(tagText(tags, tzTag("MLIM"))).value_or(4.0)));
    return pen;
}

}  // namespace

ShapeStyle readStyle(const TagRun& tags, double scale) {
    ShapeStyle style;
    const std::optional<QColor> fill = paint(tagText(tags, tzTag("FILL")), QColor(Qt::black));
    if (fill) style.brush = withOpacity(*fill, share(tagText(tags, tzTag("FILO"))));
    style.pen = strokePen(tags, scale);
    if (tagText(tags, tzTag("FILR")) == QLatin1String("evenodd")) style.fillRule = Qt::OddEvenFill;
    style.opacity = share(tagText(tags, tzTag("OPAC")));
    return style;
}

}  // namespace tzhost
