// See the header.
#include "export/Fragments.h"

#include "svg/tree/DomForm.h"

namespace tzsvg {

ParsedSvg parseSvg(const QString& xml) {
    ParsedSvg parsed;
    if (!parseXml(xml, parsed.document)) return parsed;
    const QDomNodeList elements = parsed.document.elementsByTagName(QStringLiteral("svg"));
    if (elements.size() == 1) parsed.svg = elements.at(0).toElement();
    return parsed;
}

ParsedSvg parseFragment(const QString& fragment) {
    return parseSvg(QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?><svg>") + fragment +
                    QStringLiteral("</svg>"));
}

void moveChildren(const QDomElement& from, QDomElement to) {
    for (QDomNode child = from.firstChild(); !child.isNull(); child = from.firstChild()) {
        to.appendChild(child);
    }
}

}  // namespace tzsvg
