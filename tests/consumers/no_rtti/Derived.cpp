// A decoder that a host derives from the component's.
#include <string>

#include "../OwnHost.h"

struct CountingDecoder : ZLibVideoDecompressor {
  CountingDecoder() : ZLibVideoDecompressor(nullptr, nullptr) {}

  bool DecompressBlock(unsigned char* to, unsigned int* room, const unsigned char* from,
                       unsigned int size) override {
    ++fPayloads;
    return ZLibVideoDecompressor::DecompressBlock(to, room, from, size);
  }

  int fPayloads = 0;
};

static int Fail(const char* fault) {
  std::fprintf(stderr, "%s\n", fault);
  return 2;
}

int main() {
  const std::string version = std::to_string(ZLIBVIDEO_VERSION_MAJOR) + "." +
                              std::to_string(ZLIBVIDEO_VERSION_MINOR) + "." +
                              std::to_string(ZLIBVIDEO_VERSION_PATCH);
  if (version != zlibvideo::LibraryVersion()) return Fail("the headers have another version");
  unsigned char message[] = {0x13, 0x00, 16, 0x00, 16, 0x00, 0x01, 0x00};
  CountingDecoder decoder;
  static_cast<void>(decoder.DecompressVideoEmbedded({}, message, sizeof(message)));
  if (decoder.fPayloads != 1) return Fail("the component does not call the derived decoder");
#ifdef __cpp_rtti
  VideoDecompressor* base = &decoder;
  auto* other = dynamic_cast<BlockedCodec*>(base);
  if (other == nullptr || dynamic_cast<CountingDecoder*>(other) != &decoder ||
      dynamic_cast<ZLibVideoDecompressor*>(base) != &decoder) {
    return Fail("dynamic_cast does not know the types of a decoder");
  }
#endif
  return 0;
}
