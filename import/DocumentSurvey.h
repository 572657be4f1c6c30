// One walk over a document for everything that later steps look for by name, so that none of them walks it
// again. Made when a document is recognised, again when its switches were flattened, and by the flattening
// for what it cloned.
#pragma once

#include <QDomElement>
#include <QDomNode>
#include <vector>

namespace tzsvg {

// The elements below a node (the document, mostly) by name, each list in document order.
struct DocumentSurvey {
    DocumentSurvey() = default;
    explicit DocumentSurvey(const QDomNode& top);

    size_t nodeCount = 0;            // all nodes below it
    std::vector<QDomElement> roots;  // "svg"
    std::vector<QDomElement> switches;
    std::vector<QDomElement> groups;
    std::vector<QDomElement> definitions;  // "defs"
    std::vector<QDomElement> patterns;
    std::vector<QDomElement> linearGradients;
    std::vector<QDomElement> radialGradients;
    std::vector<QDomElement> clipPaths;
    std::vector<QDomElement> privateData;  // "i:pgf"
};

}  // namespace tzsvg
