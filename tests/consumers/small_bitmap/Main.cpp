// A host that keeps its bitmap although the picture has grown.
#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <csignal>
#include <cstdlib>

#include "../Host.h"

int main() {
  unsigned char small[] = {0x13, 0x00, 16, 0x00, 16, 0x00, 0x00};
  unsigned char large[] = {0x13, 0x00, 16, 0x00, 17, 0x00, 0x00, 0x00, 0x00};
  Video video;
  ZLibVideoDecompressor decoder(nullptr, nullptr);
  if (!decoder.DecompressVideoEmbedded(video.Ref(), small, sizeof(small))) return 2;
  thisHost.refusesSurfaces = true;
  std::signal(SIGABRT, [](int) { std::_Exit(0); });
  static_cast<void>(decoder.DecompressVideoEmbedded(video.Ref(), large, sizeof(large)));
  return 2;
}
