#include <cstdio>

#include "Play.h"

int main(int argc, char** argv) {
  if (argc == 3) return Play(argv[1], argv[2]);
  std::fprintf(stderr, "usage: %s FILE.zvm FILE.hashes\n", argv[0]);
  return 1;
}
