// The scene saver server `SVG_SceneSaver`: holds what one save needs, and goes through its steps in
// writeDocument() and writeMesh(). The steps are free functions and small classes of this folder; those for
// polygons get the saver. The whole document is built before it is written; only the XML declaration and the
// document type go to the file ahead of it.
#pragma once

#include <QPointF>
#include <deque>
#include <optional>
#include <vector>

#include "export/ChildOrder.h"
#include "export/CoordinateText.h"
#include "export/DocumentBlocks.h"
#include "export/ElementBuilder.h"
#include "export/OutputDocument.h"
#include "export/OutputGroups.h"
#include "export/PolygonWriter.h"
#include "export/ProjectionPlane.h"
#include "export/ViewBox.h"
#include "hostsdk/CTzLineFormat.h"
#include "hostsdk/CTzSceneSaver.h"

namespace tzsvg {

class SVGSaver : public CTzSceneSaver, public CTzLineFormat {
  public:
    explicit SVGSaver(const CTzPtr<ITzHost>& host);

    // Also resets everything that is kept for one save.
    bool close() noexcept override;

    // ---- For the writers of polygons ----

    // The element of the current polygon, and the coordinates that go into it.
    ElementBuilder& element() { return element_; }
    CoordinateText& coordinates() { return coordinates_; }

    // A point of the mesh in the document; nothing when there is no such point, or it is not finite.
    std::optional<QPointF> project(uint32_t point) const;

    // Where the element of the current polygon belongs: the group that its tags name, or the mesh's own
    // element. Null when the tags number a group that there is not.
    ChildOrder* selectParent();

    // Gives the element of the current polygon its style, saves and places it.
    void addElement(ChildOrder& parent);

    // The "stroke-width" for polygons that have none.
    const std::string& strokeWidth() const { return strokeWidth_; }

  protected:
    CTzFileFormat* format() noexcept override { return this; }
    void verifyScene() override;
    TzResult saveScene() override;
    void visitPoint() override;
    void visitPolygon() override;

  private:
    void gatherStoredTexts();
    TzResult writeDocument();
    void writeDoctype();
    bool addGroups();
    TzResult writeMeshes();
    TzResult writeMesh(size_t meshIndex);
    ChildOrder* addMeshGroup();
    bool growViewBox();
    void reset() noexcept;

    // Of the save.
    std::vector<std::optional<StoredTexts>> storedTexts_;  // one for each mesh in scan order
    OutputDocument document_;
    OutputElement* root_ = nullptr;
    ElementBuilder element_;
    CoordinateText coordinates_;
    std::deque<ChildOrder> orders_;  // of the root, which is the first, and of the meshes' own groups
    std::deque<OutputGroups> groups_;
    std::vector<OutputGroups*> groupsOfMesh_;  // one for each mesh in scan order; null when there is none
    ViewBox viewBox_;
    PolygonWriter polygonWriter_;

    // Of the current mesh.
    PointCache points_;
    PlaneAxis axis_ = PlaneAxis::kNone;
    TzBox bounds_{};
    Projection projection_;
    std::string strokeWidth_;
    OutputGroups* meshGroups_ = nullptr;
    ChildOrder* meshParent_ = nullptr;  // null until the first polygon, for a mesh with a group of its own
    uint32_t polygonCount_ = 0;
    bool polygonFailed_ = false;
};

}  // namespace tzsvg
