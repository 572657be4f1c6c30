// One walk over a document for everything that later steps look for by name, so that none of them walks it
// again. Made when a document is recognised.
#pragma once

#include <cstddef>
#include <vector>

namespace tzsvg {

class XmlNode;

// The elements of a document by name, each list in document order.
struct DocumentSurvey {
    using List = std::vector<const XmlNode*>;

    DocumentSurvey() = default;
    explicit DocumentSurvey(const XmlNode& document);

    size_t nodeCount = 0;  // all nodes
    List roots;            // "svg"
    List switches;
    List groups;
    List definitions;  // "defs"
    List patterns;
    List linearGradients;
    List radialGradients;
    List clipPaths;
    List privateData;  // "i:pgf"
};

// Replaces every "switch" of the document by its children, in document order, nested switches included: a
// scene has no alternatives, so all of them are imported. The survey stays good, but for its switches, which
// are gone. Linear in the document.
void flattenSwitches(DocumentSurvey& survey);

}  // namespace tzsvg
