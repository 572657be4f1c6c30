// See the header.
#include "import/DocumentSurvey.h"

#include <QHash>
#include <QString>

namespace tzsvg {
namespace {

using List = std::vector<QDomElement> DocumentSurvey::*;

// Which list an element of a name goes into.
const QHash<QString, List>& listsByName() {
    static const QHash<QString, List> lists = {
        {QStringLiteral("svg"), &DocumentSurvey::roots},
        {QStringLiteral("switch"), &DocumentSurvey::switches},
        {QStringLiteral("g"), &DocumentSurvey::groups},
        {QStringLiteral("defs"), &DocumentSurvey::definitions},
        {QStringLiteral("pattern"), &DocumentSurvey::patterns},
        {QStringLiteral("linearGradient"), &DocumentSurvey::linearGradients},
        {QStringLiteral("radialGradient"), &DocumentSurvey::radialGradients},
        {QStringLiteral("clipPath"), &DocumentSurvey::clipPaths},
        {QStringLiteral("i:pgf"), &DocumentSurvey::privateData},
    };
    return lists;
}

}  // namespace

DocumentSurvey::DocumentSurvey(const QDomNode& top) {
    const auto& lists = listsByName();
    for (QDomNode node = top.firstChild(); !node.isNull();) {
        ++nodeCount;
        if (node.isElement()) {
            const auto list = lists.constFind(node.nodeName());
            if (list != lists.constEnd()) (this->*list.value()).push_back(node.toElement());
        }
        QDomNode next = node.firstChild();
        while (next.isNull() && node != top) {
            next = node.nextSibling();
            if (next.isNull()) node = node.parentNode();
        }
        node = next;
    }
}

}  // namespace tzsvg
