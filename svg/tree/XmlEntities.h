// The five entities that every XML document has without declaring them.
#pragma once

#include <QStringView>

namespace tzsvg {

struct XmlEntity {
    QStringView reference;  // behind the "&", with the ";"
    char16_t character;
};

constexpr XmlEntity kXmlEntities[] = {
    {u"amp;", u'&'}, {u"lt;", u'<'}, {u"gt;", u'>'}, {u"quot;", u'"'}, {u"apos;", u'\''}};

// The entity that a text refers to which begins behind an "&"; null when it is none of the five.
inline const XmlEntity* xmlEntityAt(QStringView text) {
    for (const XmlEntity& entity : kXmlEntities) {
        if (text.startsWith(entity.reference)) return &entity;
    }
    return nullptr;
}

}  // namespace tzsvg
