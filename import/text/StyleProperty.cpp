// See the header. A name never holds a ";", so the places where it may stand are looked at one after the
// other.
#include "import/text/StyleProperty.h"

#include <QStringView>

namespace tzsvg {

bool GetStyleProperty(const QString& style, const QString& property, QString& value) {
    value.clear();
    if (style.isEmpty() || property.isEmpty()) return false;
    const QStringView text(style);
    const QStringView name =
        property.endsWith(u':') ? QStringView(property).chopped(1) : QStringView(property);
    for (qsizetype start = 0; start >= 0 && start < text.size();) {
        QStringView rest = text.mid(start);
        if (rest.size() > name.size() && rest.at(name.size()) == u':' &&
            rest.startsWith(name, Qt::CaseInsensitive)) {
            rest = rest.mid(name.size() + 1);
            qsizetype begin = 0;
            while (begin < rest.size() && rest.at(begin).isSpace()) ++begin;
            const auto end = rest.indexOf(u';', begin);
            value = rest.mid(begin, end < 0 ? -1 : end - begin).toString();
            return true;
        }
        const auto semicolon = text.indexOf(u';', start);
        start = semicolon < 0 ? -1 : semicolon + 1;
    }
    return true;
}

}  // namespace tzsvg
