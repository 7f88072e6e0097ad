// A host whose bitmap is a row too small.
#include <csignal>

#include "../OwnHost.h"

int main() {
  unsigned char message[] = {0x13, 0x00, 16, 0x00, 17, 0x00, 0x00, 0x00, 0x00};
  Surface small;
  small.Resize(16, 16);
  ZLibVideoDecompressor decoder(nullptr, nullptr);
  if (!decoder.DecompressVideoEmbedded({}, message, sizeof(message))) return 2;
  std::signal(SIGABRT, [](int) { std::_Exit(0); });
  decoder.PushFrame(&small);
  return 2;
}
