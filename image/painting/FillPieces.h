// Makes a paint engine of Qt's fill in one go what it would share out among threads. Used by TileEngine.
//
// Qt cuts every fill of a hundred spans or more into pieces, hands them to the threads of its global pool and
// waits for them (QT_THREAD_PARALLEL_FILLS in qdrawhelper.cpp). A tile of many shapes spends most of its time
// so, waking threads for a few microseconds of work each, and threads that draw other tiles get in its way.
// Here the same pieces are painted one after another: along a gradient Qt counts on from where a piece
// begins, so other pieces would be other pixels.
#pragma once

#include <private/qdrawhelper_p.h>

namespace tzsvg {

// For as long as it lives, or until Qt sets the brush up anew.
class FillPieces {
  public:
    explicit FillPieces(QSpanData& brush);
    ~FillPieces();
    FillPieces(const FillPieces&) = delete;
    FillPieces& operator=(const FillPieces&) = delete;

  private:
    QSpanData& brush_;
    const ProcessSpans blend_;
    const ProcessSpans unclippedBlend_;
    const BitmapBlitFunc glyphs_;
};

}  // namespace tzsvg
