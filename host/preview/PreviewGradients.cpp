#include "host/preview/PreviewGradients.h"

#include <QColor>
#include <QXmlStreamReader>
#include <algorithm>
#include <cmath>

namespace tzhost {
namespace {

QString attribute(const QXmlStreamReader& reader, const char* name) {
    return reader.attributes().value(QLatin1String(name)).toString().trimmed();
}

// A coordinate of a gradient: a number, or a percentage as its part of one.
double coordinate(const QXmlStreamReader& reader, const char* name, double absent) {
    QString text = attribute(reader, name);
    const bool percent = text.endsWith(QLatin1Char('%'));
    if (percent) text.chop(1);
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (!ok || !std::isfinite(number)) return absent;
    return percent ? number / 100.0 : number;
}

// A property of a stop, from its style or its attribute.
QString property(const QXmlStreamReader& reader, const char* name) {
    const QString key = QLatin1String(name) + QLatin1Char(':');
    const QStringList declarations = attribute(reader, "style").split(QLatin1Char(';'));
    for (const QString& declaration : declarations) {
        const QString trimmed = declaration.trimmed();
        if (trimmed.startsWith(key)) return trimmed.mid(key.size()).trimmed();
    }
    return attribute(reader, name);
}

std::unique_ptr<QGradient> makeGradient(const QXmlStreamReader& reader) {
    const bool userSpace = attribute(reader, "gradientUnits") == QLatin1String("userSpaceOnUse");
    if (reader.name() == QLatin1String("linearGradient")) {
        QPointF from(coordinate(reader, "x1", 0), coordinate(reader, "y1", 0));
        QPointF to(coordinate(reader, "x2", 1), coordinate(reader, "y2", 0));
        if (userSpace) {
            // Only its direction is known here.
            const QPointF along = to - from;
            const double length = std::max(std::abs(along.x()), std::abs(along.y()));
            if (length > 0) {
                from = QPointF(along.x() < 0 ? 1 : 0, along.y() < 0 ? 1 : 0);
                to = from + along / length;
            }
        }
        return std::make_unique<QLinearGradient>(from, to);
    }
    const QPointF centre(coordinate(reader, "cx", 0.5), coordinate(reader, "cy", 0.5));
    if (userSpace) return std::make_unique<QRadialGradient>(QPointF(0.5, 0.5), 0.5);
    return std::make_unique<QRadialGradient>(
        centre, coordinate(reader, "r", 0.5),
        QPointF(coordinate(reader, "fx", centre.x()), coordinate(reader, "fy", centre.y())));
}

void addStop(const QXmlStreamReader& reader, QGradient& gradient) {
    QColor colour(property(reader, "stop-color"));
    if (!colour.isValid()) colour = Qt::black;
    bool ok = false;
    const double opacity = property(reader, "stop-opacity").toDouble(&ok);
    if (ok) colour.setAlphaF(std::clamp(opacity, 0.0, 1.0));
    gradient.setColorAt(std::clamp(coordinate(reader, "offset", 0), 0.0, 1.0), colour);
}

}  // namespace

PreviewGradients::PreviewGradients(std::string_view definitions) {
    if (definitions.empty()) return;
    const QString fragment = QString::fromUtf8(definitions.data(), static_cast<int>(definitions.size()));
    QXmlStreamReader reader(QLatin1String("<svg>") + fragment + QLatin1String("</svg>"));
    reader.setNamespaceProcessing(false);
    std::shared_ptr<QGradient> current;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        const auto name = reader.name();
        if (name == QLatin1String("linearGradient") || name == QLatin1String("radialGradient")) {
            current = makeGradient(reader);
            current->setCoordinateMode(QGradient::ObjectMode);
            gradients_.insert(attribute(reader, "id"), current);
        } else if (name == QLatin1String("stop") && current) {
            addStop(reader, *current);
        }
    }
}

QBrush PreviewGradients::brush(const QString& id) const {
    const auto found = gradients_.constFind(id);
    return found == gradients_.constEnd() ? QBrush() : QBrush(**found);
}

}  // namespace tzhost
