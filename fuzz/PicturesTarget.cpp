// Fuzz target: streams of pictures, y4m or raw ones whose size the first two bytes say, give whole
// pictures and never more of them than there are bytes for.

#include <memory>

#include "fuzz/SaveBytes.h"
#include "tools/files/ToolError.h"
#include "tools/pictures/RawPictures.h"
#include "tools/pictures/Y4mPictures.h"

namespace zlibvideo {
namespace {

std::unique_ptr<PictureSource> OpenPictures(const std::uint8_t* data, std::size_t size) {
  auto input = std::make_unique<InputFile>(SaveBytes(data, size));
  if (input->StartsWith(Y4mHeader::kSignature)) {
    return std::make_unique<Y4mPictures>(std::move(input));
  }
  unsigned char sides[2] = {};
  input->Read(sides, sizeof(sides));
  return std::make_unique<RawPictures>(std::move(input), 1 + sides[0], 1 + sides[1]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto source = OpenPictures(data, size);
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
