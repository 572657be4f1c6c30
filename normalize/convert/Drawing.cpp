#include "normalize/convert/Drawing.h"

#include <algorithm>
#include <cmath>

#include "normalize/convert/Canvas.h"
#include "normalize/convert/Groups.h"
#include "normalize/convert/ShapeElements.h"
#include "normalize/convert/Walk.h"
#include "normalize/geometry/PathText.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/paint/ClipPaths.h"

namespace tznormalize {
namespace {

constexpr int kMostPasses = 3;
constexpr double kMostLift = 1e6;  // beyond, the six digits of the export show nothing of a page

// Everything drawn, in one group. [trap: shapes and groups that stand side by side under the root lose their
// order to the definitions, which come before them]
OutputElement convertTop(Conversion& conversion, const Canvas& canvas) {
    const SourceElement& root = conversion.source.root();
    const Place place{conversion.base, conversion.styles.computed(root, Style(), canvas.viewport),
                      canvas.viewport};
    OutputElement top("g");
    if (place.style[Property::kDisplay] == u"none") return top;
    Target target;
    target.isDrawn = true;
    Group group(conversion, root, place, target);
    convertChildren(conversion, root, place, group.output(), target);
    group.finish(top, Group::Names::kLeft);
    // What the root's own opacity or mask is set on stays a group within; a plain one is the top itself, and
    // so is the top of a drawing that was normalized before.
    for (int i = 0; i < 2; ++i) {
        std::vector<OutputElement>& children = top.children();
        if (children.size() != 1 || !isPlainGroup(children.front())) break;
        OutputElement only = std::move(children.front());
        top = std::move(only);
    }
    return top;
}

// [trap: the round trip draws on what it finds drawn] The outline of the page is invisible; it fixes both
// flip heights and the plane that the export draws on.
OutputElement pageOutline(const Conversion& conversion) {
    std::optional<Box> box = conversion.page;
    join(box, conversion.drawn);
    const Box outer{std::min(0.0, std::floor(box->left)), 0.0, std::ceil(box->right), std::ceil(box->bottom)};
    std::vector<Point> corners = rectangleOutline(outer).points();
    corners.push_back(corners.front());
    OutputElement outline("polyline");
    outline.set("points", pointsText(corners, conversion.grid));
    outline.set("fill", "none");
    setNoStroke(conversion, outline);
    return outline;
}

void clipToPage(Conversion& conversion, OutputElement& top) {
    OutputElement inner("g");
    inner.set("clip-path", clipToPath(conversion, rectangleOutline(conversion.page)));
    inner.takeChildren(top);
    top.append(std::move(inner));
}

OutputElement rootElement(const Conversion& conversion, const Canvas& canvas) {
    const Grid& grid = canvas.grid;
    const std::string size = grid.text(canvas.width) + ' ' + grid.text(canvas.height);
    OutputElement root("svg");
    root.set("version", "1.1");
    // [trap: the image loader counts the view box in pixels of the size] Both are the same.
    root.set("width", grid.text(canvas.width));
    root.set("height", grid.text(canvas.height));
    root.set("viewBox", "0 " + grid.text(conversion.page.top) + ' ' + size);
    Target target;
    target.isDrawn = true;
    if (conversion.keepsNames()) {
        keepId(conversion, conversion.source.root(), root, target);
        keepAttributes(conversion.source.root(), root);
    }
    return root;
}

OutputElement assemble(Conversion& conversion, const Canvas& canvas) {
    OutputElement top = convertTop(conversion, canvas);
    if (conversion.reachesOverPage && !top.children().empty()) clipToPage(conversion, top);
    if (conversion.writtenFor == WrittenFor::kRoundTrip)
        top.children().insert(top.children().begin(), pageOutline(conversion));
    OutputElement root = rootElement(conversion, canvas);
    conversion.definitions.moveUsed(top, root);
    root.append(std::move(top));
    return root;
}

}  // namespace

std::optional<OutputElement> convertDrawing(const SourceDocument& source, const Cascade& styles,
                                            const QString& fileName, WrittenFor writtenFor, Notes& notes) {
    const Canvas canvas = canvasOf(source, styles, fileName, writtenFor);
    const size_t mark = notes.list().size();
    double lift = 0.0;
    for (int pass = 1;; ++pass) {
        notes.rewind(mark);
        Conversion conversion(source, styles, fileName, notes,
                              {0.0, lift, canvas.width, canvas.height + lift},
                              Matrix::translation(0.0, lift) * canvas.base, canvas.grid);
        conversion.writtenFor = writtenFor;
        conversion.pixel = canvas.pixel;
        conversion.mayBeLifted = lift < kMostLift && pass < kMostPasses;
        OutputElement root = assemble(conversion, canvas);
        if (conversion.budget.isSpent()) return std::nullopt;
        if (!conversion.isToBeLifted()) return root;
        // The import's flip height begins at 0, the export's at what is highest: nothing may be above 0.
        lift += std::min(std::ceil(-conversion.drawn->top), kMostLift);
    }
}

}  // namespace tznormalize
