#include "normalize/style/Reference.h"

namespace tznormalize {

Reference readReference(QStringView text) {
    text = text.trimmed();
    const bool mayBeUrl = text.startsWith(u'u') || text.startsWith(u'U');  // few are, of very many
    if (!mayBeUrl || !text.startsWith(u"url(", Qt::CaseInsensitive)) return {};
    const auto end = text.indexOf(u')');
    if (end < 0) return {};
    Reference reference;
    reference.isUrl = true;
    reference.fallback = text.mid(end + 1).trimmed();
    QStringView target = text.mid(4, end - 4).trimmed();
    if (target.startsWith(u'"') || target.startsWith(u'\'')) target = target.mid(1);
    if (target.endsWith(u'"') || target.endsWith(u'\'')) target.chop(1);
    const auto hash = target.indexOf(u'#');
    if (hash >= 0) reference.id = target.mid(hash + 1).trimmed();
    return reference;
}

}  // namespace tznormalize
