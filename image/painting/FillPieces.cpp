#include "image/painting/FillPieces.h"

namespace tzsvg {
namespace {

// What blendPieces() stands for. A thread fills one shape at a time.
thread_local ProcessSpans blendPiece = nullptr;

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
    blendPiece(count, spans, brush);
}

// The pieces are those of Qt, each with too few spans for it to cut.
void blendPieces(int count, const QSpan* spans, void* brush) {
    constexpr int kSpansOfPiece = 64;
    const int pieces = (count + kSpansOfPiece / 2) / kSpansOfPiece;
    if (pieces < 2) return blendPiece(count, spans, brush);
    int done = 0;
    for (int i = 0; i < pieces; ++i) {
        const int ofPiece = (count - done) / (pieces - i);
        blendAsInThread(ofPiece, spans + done, brush);
        done += ofPiece;
    }
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
