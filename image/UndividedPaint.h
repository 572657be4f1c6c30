// Paints where Qt does not share a fill out among threads. Used by TileRenderer.
//
// Qt cuts every fill of a hundred spans or more into pieces for the threads of its global pool, and waits for
// them. A tile of many shapes spends most of its time so, waking threads for a few microseconds of work each,
// and threads that draw other tiles get in its way. On one of the pool's own threads Qt paints in one go.
//
// Only for areas of one colour: along a gradient Qt counts on from where a piece begins, so that some pixels
// would come out different by one.
#pragma once

#include <functional>

namespace tzsvg {

// Runs `paint` on a thread of Qt's pool and waits for it; what it throws comes out. It runs on the caller's
// thread when that is the pool's, or when others keep the pool busy: nothing here waits for their work, which
// may be waiting for this tile.
void paintUndivided(const std::function<void()>& paint);

}  // namespace tzsvg
