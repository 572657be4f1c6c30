// One walk over a document for everything that later steps look for by name, so that none of them walks it
// again. Made by SVGLoader before the captures.
#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <vector>

namespace tzsvg {

// Elements by name, each list in document order.
struct DocumentSurvey {
    explicit DocumentSurvey(const QDomDocument& document);

    size_t nodeCount = 0;            // all nodes below the document
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
