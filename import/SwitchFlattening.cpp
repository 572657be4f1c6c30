// See the header. The result is that of taking the first switch of the document again and again, cloning its
// children before it and removing it.
#include "import/SwitchFlattening.h"

#include <QString>

namespace tzsvg {
namespace {

// Moves the children of every switch below a node, and of the node's, into their places. What is moved has
// been cloned before.
void dissolve(const QDomElement& element) {
    QDomNode parent = element.parentNode();
    for (QDomNode child = element.firstChild(); !child.isNull();) {
        const QDomNode next = child.nextSibling();
        parent.insertBefore(child, element);
        child = next;
    }
    parent.removeChild(element);
}

// A switch within a switch is cloned with the outer one.
bool isWithinSwitch(const QDomElement& element) {
    for (QDomNode ancestor = element.parentNode(); !ancestor.isNull(); ancestor = ancestor.parentNode()) {
        if (ancestor.nodeName() == element.nodeName()) return true;
    }
    return false;
}

}  // namespace

bool flattenSwitches(const DocumentSurvey& survey) {
    for (const QDomElement& outer : survey.switches) {
        if (isWithinSwitch(outer)) continue;
        QDomNode parent = outer.parentNode();
        if (parent.isNull()) return false;
        // Innermost last in this list: document order.
        const QDomElement clone = outer.cloneNode(true).toElement();
        parent.replaceChild(clone, outer);
        std::vector<QDomElement> switches(1, clone);
        for (QDomNode node = clone.firstChild(); !node.isNull();) {
            if (node.isElement() && node.nodeName() == clone.nodeName()) switches.push_back(node.toElement());
            QDomNode next = node.firstChild();
            while (next.isNull() && node != clone) {
                next = node.nextSibling();
                if (next.isNull()) node = node.parentNode();
            }
            node = next;
        }
        for (auto inner = switches.rbegin(); inner != switches.rend(); ++inner) dissolve(*inner);
    }
    return true;
}

}  // namespace tzsvg
