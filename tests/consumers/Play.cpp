#include "Play.h"

#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <cstdio>
#include <cstring>
#include <vector>

#include "Host.h"

namespace {

/// A host may derive from the decoder. This decoder counts payloads.
class CountingDecoder : public ZLibVideoDecompressor {
 public:
  CountingDecoder() : ZLibVideoDecompressor(nullptr, nullptr) {}

  bool DecompressBlock(unsigned char* to, unsigned int* room, const unsigned char* from,
                       unsigned int size) override {
    ++payloads;
    return ZLibVideoDecompressor::DecompressBlock(to, room, from, size);
  }

  int payloads = 0;
};

int Fail(const char* fault) {
  std::fprintf(stderr, "%s\n", fault);
  return 2;
}

/// CRC-32. A user of the shared library has no zlib to call.
unsigned int Crc(const unsigned char* bytes, std::size_t size) {
  unsigned int table[256];
  for (unsigned int i = 0; i < 256; ++i) {
    table[i] = i;
    for (int bit = 0; bit < 8; ++bit) {
      table[i] = table[i] >> 1 ^ (0xEDB88320 & (0 - (table[i] & 1)));
    }
  }
  unsigned int crc = 0xFFFFFFFF;
  for (std::size_t i = 0; i < size; ++i) crc = crc >> 8 ^ table[(crc ^ bytes[i]) & 0xFF];
  return ~crc;
}

bool ReadMessage(std::FILE* file, std::vector<unsigned char>* message) {
  unsigned char length[3];
  if (std::fread(length, 1, sizeof(length), file) != sizeof(length)) return false;
  message->resize(std::size_t{length[0]} << 16 | std::size_t{length[1]} << 8 | length[2]);
  return std::fread(message->data(), 1, message->size(), file) == message->size();
}

bool ShowsListedPicture(std::FILE* list, int index, Surface& surface) {
  char expected[64];
  char actual[64];
  std::snprintf(actual, sizeof(actual), "%d 1 %dx%d %08x", index, surface.GetWidth(),
                surface.GetHeight(), Crc(surface.Pixels(), surface.Size()));
  if (std::fgets(expected, sizeof(expected), list) == nullptr) return false;
  expected[std::strcspn(expected, "\r\n")] = '\0';
  return std::strcmp(expected, actual) == 0;
}

bool HasVersionOfHeaders() {
  char version[32];
  std::snprintf(version, sizeof(version), "%d.%d.%d", ZLIBVIDEO_VERSION_MAJOR,
                ZLIBVIDEO_VERSION_MINOR, ZLIBVIDEO_VERSION_PATCH);
  return std::strcmp(zlibvideo::LibraryVersion(), version) == 0;
}

int PlayFiles(std::FILE* stream, std::FILE* list) {
  Video video;
  auto* decoder = new CountingDecoder;
  std::vector<unsigned char> message;
  int pictures = 0;
  for (; ReadMessage(stream, &message); ++pictures) {
    const int size = static_cast<int>(message.size());
    if (!decoder->DecompressVideoEmbedded(video.Ref(), message.data(), size))
      return Fail("a message was not decoded");
    if (!ShowsListedPicture(list, pictures, video.GetSurface())) return Fail("a picture is wrong");
  }
  if (pictures == 0 || decoder->payloads == 0) return Fail("nothing was decoded");
#ifdef __cpp_rtti
  VideoDecompressor* base = decoder;
  auto* other = dynamic_cast<BlockedCodec*>(base);
  if (other == nullptr || dynamic_cast<CountingDecoder*>(other) != decoder ||
      dynamic_cast<ZLibVideoDecompressor*>(base) != decoder) {
    return Fail("dynamic_cast does not know the types of a decoder");
  }
#endif
  decoder->DecRef();
  return thisHost.inUse == 0 ? 0 : Fail("memory was not given back");
}

/// The largest grid of a header. It is made from the header alone.
int PlayWithoutMemory() {
  unsigned char message[] = {0x16, 0x0F, 0xFF, 0x0F, 0xFF, 0x00, 0x00};
  Video video;
  ZLibVideoDecompressor decoder(nullptr, nullptr);
  thisHost.limit = 1 << 20;
#ifdef __cpp_exceptions
  try {
    static_cast<void>(decoder.DecompressVideoEmbedded(video.Ref(), message, sizeof(message)));
  } catch (const std::bad_alloc&) {
    return 0;
  }
#else
  if (!decoder.DecompressVideoEmbedded(video.Ref(), message, sizeof(message))) return 0;
#endif
  return Fail("an exhausted host does not fail the message");
}

}  // namespace

int Play(const char* stream, const char* hashes) {
  if (!HasVersionOfHeaders()) return Fail("the library has another version than its headers");
  std::FILE* file = std::fopen(stream, "rb");
  std::FILE* list = std::fopen(hashes, "r");
  if (file == nullptr || list == nullptr) return Fail("no sample");
  const int result = PlayFiles(file, list);
  std::fclose(file);
  std::fclose(list);
  return result != 0 ? result : PlayWithoutMemory();
}
