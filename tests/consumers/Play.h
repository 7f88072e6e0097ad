#ifndef ZLIBVIDEO_TESTS_CONSUMERS_PLAY_H
#define ZLIBVIDEO_TESTS_CONSUMERS_PLAY_H

/// Decodes a sample with a decoder derived from the component's, on the host of Host.h, and
/// compares each picture with the sample's list of hashes. Then lets that host run out of memory.
/// Returns 0, or prints the fault on standard error.
int Play(const char* stream, const char* hashes);

#endif  // ZLIBVIDEO_TESTS_CONSUMERS_PLAY_H
