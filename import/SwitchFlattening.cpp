// See the header. The result is that of taking the first switch of the document again and again, cloning its
// children before it and removing it.
#include "import/SwitchFlattening.h"

namespace tzsvg {
namespace {

// Moves an element's children to its place, and the element out of the document.
void dissolve(const QDomElement& element) {
    QDomNode parent = element.parentNode();
    for (QDomNode child = element.firstChild(); !child.isNull();) {
        const QDomNode next = child.nextSibling();
        parent.insertBefore(child, element);
        child = next;
    }
    parent.removeChild(element);
}

}  // namespace

bool flattenSwitches(const DocumentSurvey& survey) {
    for (size_t i = 0; i < survey.switches.size();) {
        const QDomElement outer = survey.switches[i];
        QDomNode parent = outer.parentNode();
        if (parent.isNull()) return false;
        const QDomElement clone = outer.cloneNode(true).toElement();
        parent.replaceChild(clone, outer);
        const std::vector<QDomElement> inner = DocumentSurvey(clone).switches;
        // From the outside in: a switch has left its own switch before its children move, so that each of
        // them moves once, however deep the switches are nested.
        dissolve(clone);
        for (const QDomElement& element : inner) dissolve(element);
        // What follows `outer` in the survey are the switches inside it, which left the document with it.
        i += 1 + inner.size();
    }
    return true;
}

}  // namespace tzsvg
