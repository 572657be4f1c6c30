#include "normalize/check/ExportRules.h"

#include <unordered_set>

namespace tznormalize {
namespace {

using tzsvg::Element;
using tzsvg::XmlNode;

constexpr FindingRule kBehindRoot{"behind-root", "comments are left out"};
constexpr FindingRule kNoPolygon{"no-polygon", "text and pictures are carried, and the page has an outline"};
constexpr FindingRule kNoPlane{"no-plane", "the page has an outline, which spans a plane"};
constexpr FindingRule kGroupInDefinitions{"group-in-definitions",
                                          "groups in definitions stand alone, and are linked"};

void refuse(CheckReport& report, const FindingRule& rule, const QString& text) {
    report.isExported = false;
    CheckedDocument::add(report, FindingKind::kExportRefused, rule, text);
}

// Groups directly in definitions are kept with these, as text; the ones in them have a parent that the export
// does not know.
void checkGroups(const CheckedDocument& document, CheckReport& report) {
    std::unordered_set<const XmlNode*> kept;
    for (uint32_t i = 0; i < document.elements().size(); ++i) {
        const XmlNode& node = *document.elements()[i].node;
        if (node.element() != Element::kGroup) continue;
        if (isContainerOfDefinitions(node.parent()->element())) {
            kept.insert(&node);
        } else if (kept.count(node.parent()) != 0) {
            report.isExported = false;
            document.add(report, FindingKind::kExportRefused, kGroupInDefinitions, i, {},
                         QStringLiteral("a group in a group of definitions"));
        }
    }
}

}  // namespace

void checkExport(const CheckedDocument& document, const ImportedGeometry& geometry, CheckReport& report) {
    const XmlNode* const last = document.tree().top().lastChild();
    if (last != document.elements().front().node) {
        refuse(report, kBehindRoot,
               QStringLiteral(
                   "a comment or instruction stands behind the drawing: nothing before it is imported"));
    } else if (geometry.points == 0) {
        refuse(report, kNoPolygon, QStringLiteral("it holds no shape: the import makes no polygon"));
    } else if (!geometry.spansPlane) {
        refuse(report, kNoPlane, QStringLiteral("all points of its shapes lie on one line"));
    }
    checkGroups(document, report);
}

}  // namespace tznormalize
