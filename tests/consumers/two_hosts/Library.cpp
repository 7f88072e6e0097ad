// A library that exports only the function PLAY.
#include "../Play.h"

extern "C" __attribute__((visibility("default"))) int PLAY(const char* stream, const char* hashes);

int PLAY(const char* stream, const char* hashes) {
  return Play(stream, hashes);
}
