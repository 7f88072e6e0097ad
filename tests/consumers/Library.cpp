// A library that exports only the function PLAY: the program of examples/OwnHost.cpp.
#include "OwnHost.h"

extern "C" __attribute__((visibility("default"))) int PLAY(int argc, char** argv);

int PLAY(int argc, char** argv) {
  return PlayFile(argc, argv);
}
