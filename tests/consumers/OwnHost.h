#ifndef ZLIBVIDEO_TESTS_CONSUMERS_OWNHOST_H
#define ZLIBVIDEO_TESTS_CONSUMERS_OWNHOST_H

// The host of examples/OwnHost.cpp for other programs. Its `main` is `PlayFile` here.
#define main PlayFile
#include "../../examples/OwnHost.cpp"
#undef main

#endif  // ZLIBVIDEO_TESTS_CONSUMERS_OWNHOST_H
