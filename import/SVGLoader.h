// The scene loader server `SVG_SceneLoader`: holds what one file needs between recognition and the end of its
// load, and goes through the steps of a load in loadFile(). The steps are free functions and small classes of
// this folder, which get the loader.
#pragma once

#include <QStringView>
#include <optional>
#include <string>

#include "hostsdk/CTzSceneLoader.h"
#include "import/GroupTable.h"
#include "import/KeptText.h"
#include "import/Recognition.h"
#include "import/SVGIOLogMessage.h"
#include "svg/shape/DocumentExtent.h"
#include "svg/shape/ElementTransform.h"
#include "svg/text/Length.h"

namespace tzsvg {

class SVGLoader : public CTzSceneLoader {
  public:
    explicit SVGLoader(const CTzPtr<ITzHost>& host);

    // ---- Per-file state, for the steps of a load ----

    // The document: filled by recognition, cleared at the end of every load.
    XmlDocument& document() { return document_.tree; }

    // Length scale and percent references of this load.
    LengthContext& lengths() { return lengths_; }

    // The transforms of the ancestors of the node that the walk is at.
    AncestorTransforms& ancestors() { return ancestors_; }

    // The paths that were parsed to measure the document.
    ParsedPaths& parsedPaths() { return parsedPaths_; }

    // The y flip is about this height: y' = flipHeight - y. A whole number, truncated from the document's
    // largest y on purpose: the saver truncates the same way, a fraction on one side only would move a
    // drawing in every round trip. ShapeConversion/flip pins it.
    int flipHeight() const { return static_cast<int>(flipHeight_); }

    // The root element's "viewBox" text, kept for the item's tags.
    void setViewBox(std::string text) { viewBox_ = std::move(text); }

    // The index of the mesh item that this load created.
    uint32_t loadedItem() const { return loadedItem_; }

    // The numbered groups of the document.
    GroupTable& groups() { return groups_; }

    // The room for what this load keeps as text.
    KeptText& keptText() { return keptText_; }

    // The counter behind the `SPAT` tags: counts the paths that were split into several polygons.
    unsigned pathCounter() const { return pathCounter_; }
    unsigned nextPath() { return ++pathCounter_; }

    // The polygon that the current element created last; none before it creates one. A tag for an element
    // that made no polygon has nowhere to go.
    void setLastPolygon(std::optional<uint32_t> polygon) { lastPolygon_ = polygon; }

    // Sets a tag on the polygon created last, if there is one and the text is not empty. Throws
    // kTzOutOfMemory when the load keeps too much text.
    void tagLastPolygon(TzTagId id, std::string_view text);
    void tagLastPolygon(TzTagId id, QStringView text);

    SVGIOLogMessage& log() { return log_; }

  protected:
    bool recogniseFile(const std::string& fileName) override;
    void startLoad() override;
    bool loadFile() override;
    void resetFile() noexcept override;

  private:
    bool loadDocument();
    void resetCounters() noexcept;

    SVGIOLogMessage log_;
    SvgDocument document_;
    KeptText keptText_;
    std::string viewBox_;
    float flipHeight_ = 0.0F;
    LengthContext lengths_;
    AncestorTransforms ancestors_;
    ParsedPaths parsedPaths_;
    GroupTable groups_;
    unsigned pathCounter_ = 0;
    std::optional<uint32_t> lastPolygon_;
    uint32_t loadedItem_ = 0;
    std::string tagText_;  // room for a tag on its way
};

}  // namespace tzsvg
