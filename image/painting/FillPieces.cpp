#include "image/painting/FillPieces.h"

namespace tzsvg {
namespace {

// What blendPieces() stands for. A thread fills one shape at a time.
thread_local ProcessSpans blendPiece = nullptr;

// The pieces are those of Qt, each with too few spans for it to cut.
void blendPieces(int count, const QSpan* spans, void* brush) {
    constexpr int kSpansOfPiece = 64;
    const int pieces = (count + kSpansOfPiece / 2) / kSpansOfPiece;
    int done = 0;
    for (int i = 0; i < pieces - 1; ++i) {
        const int ofPiece = (count - done) / (pieces - i);
        blendPiece(ofPiece, spans + done, brush);
        done += ofPiece;
    }
    blendPiece(count - done, spans + done, brush);
}

}  // namespace

FillPieces::FillPieces(QSpanData& brush)
    : brush_(brush), blend_(brush.blend), unclippedBlend_(brush.unclipped_blend) {
    if (!unclippedBlend_ || unclippedBlend_ == blendPieces) return;
    blendPiece = unclippedBlend_;
    // With a clip, blend() cuts the spans and calls the other.
    brush.unclipped_blend = blendPieces;
    if (blend_ == unclippedBlend_) brush.blend = blendPieces;
}

// Painting a shape's stroke sets the brush up anew.
FillPieces::~FillPieces() {
    if (unclippedBlend_ == blendPieces) return;
    if (brush_.unclipped_blend == blendPieces) brush_.unclipped_blend = unclippedBlend_;
    if (brush_.blend == blendPieces) brush_.blend = blend_;
}

}  // namespace tzsvg
