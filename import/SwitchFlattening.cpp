// See the header. The result is that of taking the first switch of the document again and again, copying its
// children before it and removing it; a copy has no line number, and so has what a switch held.
#include "import/SwitchFlattening.h"

#include "svg/tree/XmlDocument.h"

namespace tzsvg {

void flattenSwitches(DocumentSurvey& survey) {
    // From the outside in: a switch has left its own switch before its children move, so that each of them
    // moves once, however deep the switches are nested.
    for (const XmlNode* const element : survey.switches) XmlDocument::dissolve(*element);
    survey.switches.clear();
}

}  // namespace tzsvg
