// The renderers of one file. A renderer is expensive to load and cheap to use, and serves one thread at a
// time: the pool keeps those that nobody uses and lends them out. What a borrower draws is what a fresh
// renderer on the present file would draw: before a renderer is lent, the file and the files it links to are
// looked at, and when one was changed, replaced or removed the renderer is dropped and the file loaded anew.
//
// A tile of a large drawing is lent a renderer of the shapes around it alone (culling/CellRenderers.h), where
// that is sure to draw the same.
//
// Renderers stay here and not in thread-local storage: a thread may outlive the module.
#pragma once

#include <QRectF>
#include <QString>
#include <QStringList>
#include <QSvgRenderer>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "hostsdk/CTzUser_Image.h"
#include "image/DrawingCost.h"
#include "image/FileStamp.h"
#include "image/TileGeometry.h"
#include "image/culling/CullingSettings.h"

namespace tzsvg {

struct LoadedDrawing {
    std::unique_ptr<QSvgRenderer> renderer;
    QStringList linkedFiles;  // which the document links to
    PaintSurvey survey;
};

// Loads a drawing after the guard has looked at the document; no renderer when the guard refuses it or Qt
// cannot read it.
LoadedDrawing loadDrawing(const QString& fileName);

class RendererPool {
    struct Version;
    struct Loaded;

  public:
    // What a tile shows, by the document's own view box; nothing when it stays transparent.
    using ViewOf = std::function<std::optional<TileView>(const QRectF& ownViewBox)>;

    // A borrowed renderer; goes back with the end of the lease. A lease ends before its pool.
    class Lease {
      public:
        Lease(Lease&&) = default;
        Lease& operator=(Lease&&) = delete;
        ~Lease();

        // Null when the file does not load at present, or when the tile asked for stays transparent.
        QSvgRenderer* renderer() const;

        // Whether it is one of the shapes around a tile, not of the whole drawing.
        bool isOfCell() const;

        // The document's own view box, whatever the renderer's was set to.
        QRectF ownViewBox() const;

        // The number of the document: another one each time the file was found changed.
        uint64_t document() const { return document_; }

      private:
        friend class RendererPool;
        Lease(RendererPool& pool, std::unique_ptr<Loaded> loaded, uint64_t document);

        RendererPool* pool_;
        std::unique_ptr<Loaded> loaded_;
        uint64_t document_;
    };

    // `lock` guards the idle renderers, the latest version and the document's number.
    RendererPool(QString fileName, CTzUser_ThreadMutex lock, CullingSettings culling = {});
    ~RendererPool();
    RendererPool(const RendererPool&) = delete;
    RendererPool& operator=(const RendererPool&) = delete;

    // A renderer of the whole drawing.
    Lease lend();

    // One that draws the tile as that one would.
    Lease lend(const ViewOf& viewOf);

  private:
    std::shared_ptr<Version> latest();
    uint64_t latestNumber();
    std::unique_ptr<Loaded> takeIdle();
    std::unique_ptr<Loaded> load() const;
    void number(Loaded& loaded);
    void giveBack(std::unique_ptr<Loaded> loaded) noexcept;

    QString fileName_;
    CTzUser_ThreadMutex lock_;
    CullingSettings culling_;
    std::vector<std::unique_ptr<Loaded>> idle_;  // of whole drawings
    std::shared_ptr<Version> latest_;            // of the document loaded last
    uint64_t document_ = 0;
};

}  // namespace tzsvg
