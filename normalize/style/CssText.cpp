#include "normalize/style/CssText.h"

namespace tznormalize {
namespace {

// Behind the quoted text that begins at `from`.
qsizetype skipQuoted(QStringView css, qsizetype from) {
    const QChar quote = css[from];
    for (qsizetype i = from + 1; i < css.size(); ++i) {
        if (css[i] == u'\\') {
            ++i;
        } else if (css[i] == quote) {
            return i + 1;
        }
    }
    return css.size();
}

}  // namespace

QString withoutComments(QStringView css) {
    QString clean;
    clean.reserve(int(css.size()));
    for (qsizetype i = 0; i < css.size();) {
        const QStringView rest = css.mid(i);
        if (css[i] == u'"' || css[i] == u'\'') {
            const qsizetype end = skipQuoted(css, i);
            clean += css.mid(i, end - i);
            i = end;
        } else if (rest.startsWith(u"/*")) {
            const qsizetype end = rest.indexOf(u"*/", 2);
            i = end < 0 ? css.size() : i + end + 2;
            clean += u' ';
        } else if (rest.startsWith(u"<!--")) {
            i += 4;
        } else if (rest.startsWith(u"-->")) {
            i += 3;
        } else {
            clean += css[i++];
        }
    }
    return clean;
}

qsizetype findOutside(QStringView css, QStringView ends, qsizetype from) {
    int depth = 0;
    for (qsizetype i = from; i < css.size();) {
        const QChar c = css[i];
        if (depth == 0 && ends.contains(c)) return i;
        if (c == u'"' || c == u'\'') {
            i = skipQuoted(css, i);
            continue;
        }
        if (c == u'(' || c == u'[' || c == u'{') ++depth;
        if ((c == u')' || c == u']' || c == u'}') && depth > 0) --depth;
        i += c == u'\\' ? 2 : 1;
    }
    return css.size();
}

qsizetype closingOf(QStringView css, qsizetype open) {
    const QChar opening = css[open];
    const QStringView closing = opening == u'{' ? u"}" : opening == u'[' ? u"]" : u")";
    return findOutside(css, closing, open + 1);
}

}  // namespace tznormalize
