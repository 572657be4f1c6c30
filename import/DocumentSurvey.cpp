#include "import/DocumentSurvey.h"

#include "svg/tree/XmlDocument.h"

namespace tzsvg {
namespace {

// Which list an element of a name goes into; none for most.
DocumentSurvey::List* listOf(Element name, DocumentSurvey& survey) {
    switch (name) {
        case Element::kSvg:
            return &survey.roots;
        case Element::kSwitch:
            return &survey.switches;
        case Element::kGroup:
            return &survey.groups;
        case Element::kDefinitions:
            return &survey.definitions;
        case Element::kPattern:
            return &survey.patterns;
        case Element::kLinearGradient:
            return &survey.linearGradients;
        case Element::kRadialGradient:
            return &survey.radialGradients;
        case Element::kClipPath:
            return &survey.clipPaths;
        case Element::kPrivateData:
            return &survey.privateData;
        default:
            return nullptr;
    }
}

}  // namespace

DocumentSurvey::DocumentSurvey(const XmlNode& document) {
    for (const XmlNode* node = document.nextBelow(document); node; node = node->nextBelow(document)) {
        ++nodeCount;
        if (List* const list = listOf(node->element(), *this)) list->push_back(node);
    }
}

// The result is that of taking the first switch of the document again and again, copying its children before
// it and removing it; a copy has no line number, and so has what a switch held.
void flattenSwitches(DocumentSurvey& survey) {
    // From the outside in: a switch has left its own switch before its children move, so that each of them
    // moves once, however deep the switches are nested.
    for (const XmlNode* const element : survey.switches) XmlDocument::dissolve(*element);
    survey.switches.clear();
}

}  // namespace tzsvg
