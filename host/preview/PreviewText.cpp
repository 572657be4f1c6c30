#include "host/preview/PreviewText.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace tzhost {
namespace {

// One function of a transform with its arguments; nothing when there is no such function.
std::optional<QTransform> transformFunction(const QString& name, const std::vector<double>& arguments) {
    constexpr double kDegrees = 3.14159265358979323846 / 180.0;
    const size_t count = arguments.size();
    const auto at = [&](size_t i, double absent) { return i < count ? arguments[i] : absent; };
    if (name == QLatin1String("matrix") && count == 6) {
        return QTransform(arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
    }
    if (count == 0) return std::nullopt;
    if (name == QLatin1String("translate")) return QTransform::fromTranslate(arguments[0], at(1, 0));
    if (name == QLatin1String("scale")) return QTransform::fromScale(arguments[0], at(1, arguments[0]));
    if (name == QLatin1String("skewX")) return QTransform(1, 0, std::tan(arguments[0] * kDegrees), 1, 0, 0);
    if (name == QLatin1String("skewY")) return QTransform(1, std::tan(arguments[0] * kDegrees), 0, 1, 0, 0);
    if (name != QLatin1String("rotate")) return std::nullopt;
    const QTransform turned = QTransform().rotate(arguments[0]);
    return QTransform::fromTranslate(-at(1, 0), -at(2, 0)) * turned *
           QTransform::fromTranslate(at(1, 0), at(2, 0));
}

bool isFinite(const QTransform& transform) {
    return std::isfinite(transform.m11()) && std::isfinite(transform.m12()) &&
           std::isfinite(transform.m21()) && std::isfinite(transform.m22()) &&
           std::isfinite(transform.dx()) && std::isfinite(transform.dy());
}

}  // namespace

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

std::optional<double> readFraction(const QString& text) {
    const std::optional<double> number = leadingNumber(text);
    if (!number || !std::isfinite(*number)) return std::nullopt;
    return text.endsWith(QLatin1Char('%')) ? *number / 100.0 : *number;
}

double readOpacity(const QString& text) {
    return std::clamp(readFraction(text).value_or(1.0), 0.0, 1.0);
}

std::vector<double> readNumbers(const QString& text, size_t most) {
    std::vector<double> numbers;
    const QString list = QString(text).replace(QLatin1Char(','), QLatin1Char(' ')).simplified();
    const QStringList words = list.split(QLatin1Char(' '));
    for (const QString& word : words) {
        bool ok = false;
        const double number = word.toDouble(&ok);
        if (!ok || numbers.size() == most) break;
        numbers.push_back(number);
    }
    return numbers;
}

QTransform readTransform(const QString& text) {
    QTransform whole;
    const QStringList functions = text.split(QLatin1Char(')'));
    for (const QString& function : functions) {
        const auto opening = function.indexOf(QLatin1Char('('));
        if (opening < 0) break;
        const QString name = QString(function.left(opening)).remove(QLatin1Char(',')).trimmed();
        // "1-2" is two numbers, unless the minus belongs to an exponent.
        QString arguments = function.mid(opening + 1);
        arguments.replace(QLatin1Char('-'), QLatin1String(" -"))
            .replace(QLatin1String("e -"), QLatin1String("e-"));
        const auto next = transformFunction(name, readNumbers(arguments, 6));
        if (!next) return {};
        whole = *next * whole;
    }
    return isFinite(whole) ? whole : QTransform();
}

QString readReference(const QString& text) {
    const auto end = text.indexOf(QLatin1Char(')'));
    if (!text.startsWith(QLatin1String("url(")) || end < 0) return {};
    QString id = text.mid(4, end - 4).trimmed();
    id.remove(QLatin1Char('"')).remove(QLatin1Char('\''));
    return id.mid(id.startsWith(QLatin1Char('#')) ? 1 : 0);
}

QString styleProperty(const QString& style, const char* name) {
    const QString key = QLatin1String(name);
    const QStringList declarations = style.split(QLatin1Char(';'));
    for (const QString& declaration : declarations) {
        const auto colon = declaration.indexOf(QLatin1Char(':'));
        if (colon >= 0 && declaration.left(colon).trimmed() == key)
            return declaration.mid(colon + 1).trimmed();
    }
    return {};
}

}  // namespace tzhost
