#include "import/NodeWalk.h"

#include <string>
#include <vector>

#include "import/SVGLoader.h"
#include "import/ShapeConverter.h"
#include "svg/RoundTripNames.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {
namespace {

struct Handled {
    bool succeeded;
    bool advancesIndex;  // whether the next sibling's drawing index is one higher
};

Handled handleElement(SVGLoader& loader, const XmlNode& element, unsigned index) {
    switch (element.element()) {
        // A rectangle does not advance the drawing index, every other shape and a group does. The asymmetry
        // is meant: it is how stored drawings are ordered, and the saver reads them so. Loader/drawingIndices
        // pins it.
        case Element::kRect:
            return {convertRect(loader, element), false};
        case Element::kPath:
            return {convertPath(loader, element, index), true};
        case Element::kGroup:
            return {true, true};
        case Element::kCircle:
        case Element::kEllipse:
            return {convertEllipse(loader, element), true};
        case Element::kLine:
            return {convertLine(loader, element), true};
        case Element::kPolygon:
            return {convertPolygon(loader, element), true};
        case Element::kPolyline:
            return {convertPolyline(loader, element), true};
        default:
            return {true, false};
    }
}

// Handles one node, without its children. `advances` tells whether the index moves on for its next sibling.
bool visit(SVGLoader& loader, const XmlNode& node, unsigned index, bool& advances) {
    loader.log().addNodeLine(node.name(), node.line());
    Handled handled{true, false};
    if (node.isElement()) {
        loader.setLastPolygon(std::nullopt);
        handled = handleElement(loader, node, index);
        if (node.isShape()) loader.tagLastPolygon(kTagDrawingIndex, std::to_string(index));
    }
    loader.log().addLine("Node parsed\n");
    if (loader.monitor() && !loader.monitor().step(1)) {
        loader.log().addLine("User aborted\n");
        return false;
    }
    advances = handled.advancesIndex;
    return handled.succeeded;
}

}  // namespace

bool walkNodes(SVGLoader& loader, const XmlNode& start) {
    std::vector<unsigned> indices(1, 0);  // the drawing index at each level of the walk
    const XmlNode* node = &start;
    while (true) {
        bool advances = false;
        if (!visit(loader, *node, indices.back(), advances)) return false;
        if (advances) ++indices.back();

        const XmlNode* const child = isContainerOfDefinitions(node->element()) ? nullptr : node->firstChild();
        if (child) {
            loader.ancestors().push(*node);
            indices.push_back(0);
            node = child;
            continue;
        }
        while (!node->nextSibling()) {
            if (indices.size() == 1) return true;
            loader.ancestors().pop();
            indices.pop_back();
            node = node->parent();
        }
        node = node->nextSibling();
    }
}

}  // namespace tzsvg
