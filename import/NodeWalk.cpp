// See the header.
#include "import/NodeWalk.h"

#include <QDomElement>
#include <string>
#include <vector>

#include "import/PathConverter.h"
#include "import/SVGLoader.h"
#include "import/ShapeConverter.h"
#include "import/shape/ShapeItem.h"
#include "import/shape/ShapeNames.h"
#include "import/text/RoundTripNames.h"

namespace tzsvg {
namespace {

// Elements that the walk knows beside the shapes.
struct Names {
    const QString group = QStringLiteral("g");
    const QString defs = QStringLiteral("defs");
    const QString clipPath = QStringLiteral("clipPath");
    const QString pattern = QStringLiteral("pattern");
};

const Names& names() {
    static const Names built;
    return built;
}

struct Handled {
    bool succeeded;
    bool advancesIndex;  // whether the next sibling's drawing index is one higher
};

Handled handleElement(SVGLoader& loader, const ShapeElement& element, const QString& name, unsigned index) {
    const ShapeNames& n = shapeNames();
    // A rectangle does not advance the drawing index, every other shape and a group does. The asymmetry is
    // meant: it is how stored drawings are ordered, and the saver reads them so. Loader/drawingIndices pins
    // it.
    if (name == n.rect) return {convertRect(loader, element), false};
    if (name == n.path) return {convertPath(loader, element, index), true};
    if (name == names().group) return {true, true};
    if (name == n.circle || name == n.ellipse) return {convertEllipse(loader, element), true};
    if (name == n.line) return {convertLine(loader, element), true};
    if (name == n.polygon) return {convertPolygon(loader, element), true};
    if (name == n.polyline) return {convertPolyline(loader, element), true};
    return {true, false};
}

// What these hold is kept as text by the package, and never becomes geometry.
bool isContainerOfDefinitions(const QString& name) {
    const Names& n = names();
    return name == n.defs || name == n.clipPath || name == n.pattern;
}

// Handles one node, without its children. `advances` tells whether the index moves on for its next sibling.
bool visit(SVGLoader& loader, const QDomNode& node, const QString& name, unsigned index, bool& advances) {
    loader.log().addNodeLine(name, node.lineNumber());
    Handled handled{true, false};
    if (node.isElement()) {
        loader.setLastPolygon(std::nullopt);
        handled = handleElement(loader, ShapeElement(node.toElement()), name, index);
        if (isShapeElement(node)) loader.tagLastPolygon(kTagDrawingIndex, std::to_string(index));
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

bool walkNodes(SVGLoader& loader, const QDomNode& start) {
    std::vector<unsigned> indices(1, 0);  // the drawing index at each level of the walk
    QDomNode node = start;
    while (true) {
        const QString name = node.nodeName();
        bool advances = false;
        if (!visit(loader, node, name, indices.back(), advances)) return false;
        if (advances) ++indices.back();

        const QDomNode child = isContainerOfDefinitions(name) ? QDomNode() : node.firstChild();
        if (!child.isNull()) {
            loader.ancestors().push(node);
            indices.push_back(0);
            node = child;
            continue;
        }
        QDomNode next = node.nextSibling();
        while (next.isNull() && indices.size() > 1) {
            loader.ancestors().pop();
            indices.pop_back();
            node = node.parentNode();
            next = node.nextSibling();
        }
        if (next.isNull()) return true;
        node = next;
    }
}

}  // namespace tzsvg
