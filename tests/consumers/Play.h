#ifndef ZLIBVIDEO_TESTS_CONSUMERS_PLAY_H
#define ZLIBVIDEO_TESTS_CONSUMERS_PLAY_H

/// Decodes a sample with a decoder derived from the component's, on the host of Host.h, and
/// compares each picture with the list of hashes that lies beside it. Then lets that host run out
/// of memory. Says on standard error what went wrong; 0 when nothing did.
int Play(const char* stream, const char* hashes);

#endif  // ZLIBVIDEO_TESTS_CONSUMERS_PLAY_H
