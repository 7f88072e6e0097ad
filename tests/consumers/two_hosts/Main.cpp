#include <cstdio>

extern "C" int PlayFirst(const char* stream, const char* hashes);
extern "C" int PlaySecond(const char* stream, const char* hashes);

int main(int argc, char** argv) {
  if (argc != 3) return 1;
  const int first = PlayFirst(argv[1], argv[2]);
  const int second = PlaySecond(argv[1], argv[2]);
  std::printf("first host: %d, second host: %d\n", first, second);
  return first + second;
}
