// The smallest host: feeds the messages of a file to a decoder and looks at the pictures.
//
//   example_host_loop samples/desktop.zvm
//
// In such a file each message follows its length: 3 bytes, most significant first.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <zlibvideo/host/standin/StandInMessage.h>
#include <zlibvideo/host/standin/StandInVideoObject.h>

namespace {

bool ReadMessage(std::FILE* file, std::vector<unsigned char>* message) {
  unsigned char length[3];
  if (std::fread(length, 1, sizeof(length), file) != sizeof(length)) return false;
  message->resize(std::size_t{length[0]} << 16 | std::size_t{length[1]} << 8 | length[2]);
  return std::fread(message->data(), 1, message->size(), file) == message->size();
}

}  // namespace

int main(int argc, char** argv) {
  std::FILE* file = argc == 2 ? std::fopen(argv[1], "rb") : nullptr;
  if (file == nullptr) {
    std::fprintf(stderr, "usage: %s FILE.zvm\n", argv[0]);
    return 1;
  }

  StandInVideoObject video;  // owns the bitmap that shows the video; outlives the decoder
  auto* decoder = new ZLibVideoDecompressor(nullptr, nullptr);

  int decoded = 0;
  int failed = 0;
  std::vector<unsigned char> bytes;
  while (ReadMessage(file, &bytes)) {
    StandInMessage message(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    const bool ok = decoder->DecompressVideoMessage(video.Ref(), &message, false, false) == 1;
    ++(ok ? decoded : failed);
  }

  // Row 0 is the top row. A pixel is blue, green, red, alpha.
  const StandInBitmap& bitmap = video.Bitmap();
  if (decoded != 0) {
    const unsigned char* pixel = bitmap.Pixels().data();
    std::printf("%d x %d, top left pixel #%02x%02x%02x, ", bitmap.GetWidth(), bitmap.GetHeight(),
                pixel[2], pixel[1], pixel[0]);
  }
  std::printf("%d messages decoded, %d failed\n", decoded, failed);

  decoder->DecRef();  // the last reference: the decoder destroys itself
  std::fclose(file);
  return decoded != 0 && failed == 0 ? 0 : 2;
}
