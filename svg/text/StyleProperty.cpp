// Neither a name nor a value holds a ";".
#include "svg/text/StyleProperty.h"

namespace tzsvg {

StyleProperties::StyleProperties(QStringView style) {
    while (!style.isEmpty()) {
        const auto semicolon = style.indexOf(u';');
        const QStringView part = style.left(semicolon < 0 ? style.size() : semicolon);
        style = style.mid(semicolon < 0 ? style.size() : semicolon + 1);
        const auto colon = part.indexOf(u':');
        if (colon < 0) continue;
        auto begin = colon + 1;
        while (begin < part.size() && part.at(begin).isSpace()) ++begin;
        properties_.append({part.left(colon), part.mid(begin)});
    }
}

QStringView StyleProperties::value(QStringView name) const {
    for (const Property& property : properties_) {
        if (property.name.size() == name.size() && property.name.compare(name, Qt::CaseInsensitive) == 0)
            return property.value;
    }
    return {};
}

bool GetStyleProperty(const QString& style, const QString& property, QString& value) {
    value.clear();
    if (style.isEmpty() || property.isEmpty()) return false;
    const QStringView name(property);
    value = StyleProperties(style).value(name.endsWith(u':') ? name.chopped(1) : name).toString();
    return true;
}

}  // namespace tzsvg
