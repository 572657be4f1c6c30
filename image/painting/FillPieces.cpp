#include "image/painting/FillPieces.h"

namespace tzsvg {
namespace {

// What blendPieces() stands for is kept with the brush, in the place of the function for glyphs of bitmaps,
// which only pens use: it is told of nothing else.
using AnyFunction = void (*)();
void keepBlend(QSpanData& brush, ProcessSpans blend) {
    brush.bitmapBlit = reinterpret_cast<BitmapBlitFunc>(reinterpret_cast<AnyFunction>(blend));
}
ProcessSpans keptBlend(const void* brush) {
    const auto kept = reinterpret_cast<AnyFunction>(static_cast<const QSpanData*>(brush)->bitmapBlit);
    return reinterpret_cast<ProcessSpans>(kept);
}

// Qt's blend functions keep pixels on the stack: where these are aligned to 32 bytes they are computed by
// vector, elsewhere one by one, and now and then that comes out different by one. The threads of Qt's pool
// come there with the stack 16 bytes beside such an address; a caller may come with any.
[[gnu::noinline]] void blendAsInThread(int count, const QSpan* spans, void* brush) {
    constexpr uintptr_t kVector = 32;
    constexpr int kTries = 2;
    const volatile size_t step = 1;  // moves the stack by 16, as the compiler does not know it
    for (int i = 0; i < kTries; ++i) {
        volatile char* const end = static_cast<char*>(__builtin_alloca(step));
        *end = 0;
        if (reinterpret_cast<uintptr_t>(end) % kVector != 0) break;
    }
    keptBlend(brush)(count, spans, brush);
}

// The pieces are those of Qt, each with too few spans for it to cut.
void blendPieces(int count, const QSpan* spans, void* brush) {
    constexpr int kSpansOfPiece = 64;
    const int pieces = (count + kSpansOfPiece / 2) / kSpansOfPiece;
    if (pieces < 2) return keptBlend(brush)(count, spans, brush);
    int done = 0;
    for (int i = 0; i < pieces; ++i) {
        const int ofPiece = (count - done) / (pieces - i);
        blendAsInThread(ofPiece, spans + done, brush);
        done += ofPiece;
    }
}

}  // namespace

FillPieces::FillPieces(QSpanData& brush)
    : brush_(brush), blend_(brush.blend), unclippedBlend_(brush.unclipped_blend), glyphs_(brush.bitmapBlit) {
    if (!unclippedBlend_ || unclippedBlend_ == blendPieces) return;
    keepBlend(brush, unclippedBlend_);
    // With a clip, blend() cuts the spans and calls the other.
    brush.unclipped_blend = blendPieces;
    if (blend_ == unclippedBlend_) brush.blend = blendPieces;
}

// Painting a shape's stroke sets the brush up anew.
FillPieces::~FillPieces() {
    if (unclippedBlend_ == blendPieces || brush_.unclipped_blend != blendPieces) return;
    brush_.unclipped_blend = unclippedBlend_;
    brush_.blend = blend_;
    brush_.bitmapBlit = glyphs_;
}

}  // namespace tzsvg
