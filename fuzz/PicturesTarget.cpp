// Fuzz target: streams of pictures, y4m or raw ones whose size the first two bytes say, give whole
// pictures and never more of them than there are bytes for.

#include <sys/mman.h>
#include <unistd.h>

#include <memory>

#include "fuzz/Mutation.h"
#include "tools/files/ToolError.h"
#include "tools/pictures/RawPictures.h"
#include "tools/pictures/Y4mPictures.h"

namespace zlibvideo {
namespace {

ByteInput OpenBytes(ByteSpan bytes) {
  const int descriptor = memfd_create("input", MFD_CLOEXEC);
  Require(write(descriptor, bytes.data, bytes.size) == static_cast<ssize_t>(bytes.size));
  Require(lseek(descriptor, 0, SEEK_SET) == 0);
  return {InputFile(fdopen(descriptor, "rb")), "input"};
}

std::unique_ptr<PictureSource> OpenPictures(ByteSpan bytes) {
  ByteInput input = OpenBytes(bytes);
  if (input.StartsWith(Y4mHeader::kSignature))
    return std::make_unique<Y4mPictures>(std::move(input));
  unsigned char size[2] = {};
  static_cast<void>(input.Read(size, sizeof(size)));
  return std::make_unique<RawPictures>(std::move(input), 1 + size[0], 1 + size[1]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto source = OpenPictures({data, static_cast<unsigned int>(size)});
  Picture picture;
  std::size_t seen = 0;
  try {
    while (source->Next(&picture)) {
      const auto pixels =
          static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
      Require(pixels > 0 && picture.pixels.size() == pixels * Picture::kPixelBytes);
      seen += picture.pixels.size();
      Require(seen <= size);
    }
    Require(seen > 0);
  } catch (const ToolError&) {
  }
  return 0;
}

}  // namespace zlibvideo
