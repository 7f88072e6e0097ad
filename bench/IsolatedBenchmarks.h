#ifndef ZLIBVIDEO_BENCH_ISOLATEDBENCHMARKS_H
#define ZLIBVIDEO_BENCH_ISOLATEDBENCHMARKS_H

#include <vector>

#include "bench/StreamFile.h"

namespace zlibvideo::bench {

/// Benchmarks of single steps, named TOPIC/CASE.

/// Composition of a whole picture, against copying the bitmap.
void RegisterComposition();
/// Conversion of colour-reduced streams, against the plain loop; `recorded` are streams of blocks
/// as a recorder made them, possibly none.
void RegisterConversion(std::vector<Bytes> recorded);
/// Setting up a grid, and messages of 1 to 65,536 blocks.
void RegisterGrid();

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_ISOLATEDBENCHMARKS_H
