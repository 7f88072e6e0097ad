#include "tools/record/FrameEncoder.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include "bitstream/MessageBody.h"
#include "grid/BlockFormat.h"
#include "grid/Sizes.h"
#include "tools/parallel/Parallel.h"
#include "tools/record/Deflate.h"
#include "tools/record/RecordError.h"
#include "tools/stream/SpanOf.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

/// Any frame type but 0 and that of key frames.
constexpr int kInterFrameType = 2;

FrameHeader MakeHeader(int width, int height, const RecordOptions& options) {
  FrameHeader header;
  header.codecType = options.codecType;
  header.imageWidth = width;
  header.imageHeight = height;
  header.blockWidth = options.blockWidth;
  header.blockHeight = options.blockHeight;
  return header;
}

/// The pixels of `picture` that a row of `block` covers. Row 0 is the bottom row, as in its buffer.
/// REQUIRES: the block belongs to a grid over a picture of this size.
const unsigned char* CoveredRow(const Picture& picture, const BitmapDataBlock& block,
                                std::int32_t row) {
  static_assert(Picture::kPixelBytes == kBlockPixelBytes);
  // The block's place is given in a frame whose rows run upward.
  const std::ptrdiff_t stride = block.fImageStride;
  const std::ptrdiff_t bottomRow = picture.height - 1 - block.fImageOffset / stride;
  const std::ptrdiff_t left = block.fImageOffset % stride;
  return picture.pixels.data() + (bottomRow - row) * stride + left;
}

/// The part of `picture` that `block` covers, as the block's buffer has it.
std::vector<unsigned char> CutBlock(const Picture& picture, const BitmapDataBlock& block) {
  std::vector<unsigned char> cut;
  cut.reserve(std::size_t{RowBytes(block)} * static_cast<std::size_t>(block.fHeight));
  for (std::int32_t row = 0; row < block.fHeight; ++row) {
    const unsigned char* const pixels = CoveredRow(picture, block, row);
    cut.insert(cut.end(), pixels, pixels + RowBytes(block));
  }
  return cut;
}

bool Shows(const BitmapDataBlock& block, const Picture& picture) {
  const std::size_t rowBytes = RowBytes(block);
  const unsigned char* shown = block.fRawData;
  if (static_cast<std::size_t>(block.fRawDataSize) !=
      rowBytes * static_cast<std::size_t>(block.fHeight)) {
    return false;
  }
  for (std::int32_t row = 0; row < block.fHeight; ++row, shown += rowBytes) {
    if (std::memcmp(shown, CoveredRow(picture, block, row), rowBytes) != 0) return false;
  }
  return true;
}

}  // namespace

bool FrameEncoder::Pass::IsShownBy(const BitmapDataBlock& block) const {
  return Shows(block, target) || (&target != &result && Shows(block, result));
}

FrameEncoder::FrameEncoder(int width, int height, const RecordOptions& options)
    : fOptions(options), fHeader(MakeHeader(width, height, options)), fBlockEncoder(options) {
  if (!fDecoder.SetupCodec(width, height, options.blockWidth, options.blockHeight)) {
    throw RecordError("no memory for the block grid");
  }
  for (std::int32_t row = 0; row < fDecoder.GridHeight(); ++row) {
    for (std::int32_t column = 0; column < fDecoder.GridWidth(); ++column) {
      fBlocks.push_back(fDecoder.GetBlock(row, column));
    }
  }
}

const std::vector<unsigned char>& FrameEncoder::Encode(const Picture& picture) {
  if (picture.width != fHeader.imageWidth || picture.height != fHeader.imageHeight) {
    throw RecordError("is " + SizeText(picture.width, picture.height) +
                      ", but the pictures before it are " +
                      SizeText(fHeader.imageWidth, fHeader.imageHeight));
  }
  const bool keyFrame = StartsKeyFrame();
  fMessage.clear();
  WriteHeader(keyFrame);
  if (fOptions.codecType == kCodecTypeVersion2) {
    WriteVersion2Body(picture, keyFrame);
  } else {
    WritePass({picture, picture, {}, keyFrame});
  }
  ++fMessagesMade;
  return fMessage;
}

bool FrameEncoder::StartsKeyFrame() const {
  return fMessagesMade == 0 || (fOptions.keyEvery != 0 && fMessagesMade % fOptions.keyEvery == 0);
}

void FrameEncoder::WriteHeader(bool keyFrame) {
  fHeader.frameType = keyFrame ? FrameHeader::kKeyFrameType : kInterFrameType;
  unsigned char bytes[FrameHeader::kSize];
  fHeader.Write(bytes);
  fMessage.insert(fMessage.end(), bytes, bytes + FrameHeader::kSize);
}

void FrameEncoder::WriteVersion2Body(const Picture& picture, bool keyFrame) {
  const std::size_t flagsAt = fMessage.size();
  fMessage.push_back(0);
  // A key frame depends on nothing earlier, reference data included.
  const bool intermediate = !keyFrame;
  if (!fOptions.UsesReducedColors()) {
    WritePass({picture, picture, {intermediate, nullptr}, keyFrame});
    return;
  }
  if (keyFrame) {
    fColors.emplace(picture);
    WritePalette();
    fMessage[flagsAt] |= kFlagPalette;
  }
  const Picture reduced = Reduce(picture);
  const bool twoPasses = fOptions.passes > 1;
  WritePass({reduced, twoPasses ? picture : reduced, {intermediate, &*fColors}, keyFrame});
  if (!twoPasses) return;

  const std::size_t secondPassAt = fMessage.size();
  if (WritePass({picture, picture, {true, nullptr}, false})) {
    fMessage[flagsAt] |= kFlagSecondPass;
  } else {
    fMessage.resize(secondPassAt);
  }
}

Picture FrameEncoder::Reduce(const Picture& picture) const {
  Picture reduced = picture;
  const auto width = static_cast<std::size_t>(picture.width);
  ForEach(static_cast<std::size_t>(picture.height), fOptions.jobs, [&](std::size_t row) {
    fColors->Reduce(&reduced.pixels[row * width * Picture::kPixelBytes], width);
  });
  return reduced;
}

void FrameEncoder::WritePalette() {
  const std::size_t start = fMessage.size();
  const std::vector<unsigned char> colors = fColors->PaletteBytes();
  const std::vector<unsigned char> palette =
      Deflate(StreamForm::kZlib, fOptions.level, SpanOf(colors));
  AppendSize(palette.size());
  fMessage.insert(fMessage.end(), palette.begin(), palette.end());
  if (!fDecoder.ApplyPalette(&fMessage, start)) throw RecordError("its palette does not decode");
}

bool FrameEncoder::WritePass(const Pass& pass) {
  const std::size_t start = fMessage.size();
  const auto payloads = EncodeBlocks(pass);
  bool anySent = false;
  for (std::size_t i = 0; i < fBlocks.size(); ++i) {
    if (payloads[i]) {
      AppendPayload(*fBlocks[i], *payloads[i]);
      anySent = true;
    } else {
      AppendSize(0);
    }
  }
  CheckPass(pass, start);
  return anySent;
}

std::vector<std::optional<BlockPayload>> FrameEncoder::EncodeBlocks(const Pass& pass) {
  std::vector<std::optional<BlockPayload>> payloads(fBlocks.size());
  ForEach(fBlocks.size(), fOptions.jobs, [&](std::size_t i) {
    const BitmapDataBlock& block = *fBlocks[i];
    if (!pass.sendAll && pass.IsShownBy(block)) return;
    const std::vector<unsigned char> pixels = CutBlock(pass.target, block);
    payloads[i] = fBlockEncoder.Encode(block, SpanOf(pixels), pass.forms);
  });
  return payloads;
}

void FrameEncoder::AppendPayload(const BitmapDataBlock& block, const BlockPayload& payload) {
  const std::size_t size = payload.RecordSize(fOptions.codecType);
  if (size > BlockRecord::kMaxSize) {
    throw RecordError("a block of " + SizeText(block.fWidth, block.fHeight) + " pixels takes " +
                      std::to_string(size) + " bytes, but a record can have at most " +
                      std::to_string(BlockRecord::kMaxSize) + ": the block size " +
                      SizeText(fOptions.blockWidth, fOptions.blockHeight) +
                      " is too large for this picture");
  }
  AppendSize(size);
  if (fOptions.codecType == kCodecTypeVersion2) {
    unsigned char header[BlockHeader::kMaxSize];
    payload.header.Write(header);
    fMessage.insert(fMessage.end(), header, header + payload.header.Size());
  }
  fMessage.insert(fMessage.end(), payload.bytes.begin(), payload.bytes.end());
}

void FrameEncoder::AppendSize(std::size_t size) {
  char bytes[BlockRecord::kSizeFieldBytes];
  fDecoder.WriteToBuf2(bytes, 0, static_cast<std::int32_t>(size));
  fMessage.insert(fMessage.end(), bytes, bytes + BlockRecord::kSizeFieldBytes);
}

void FrameEncoder::CheckPass(const Pass& pass, std::size_t start) {
  const bool good = fDecoder.ApplyPass(&fMessage, start, fOptions.codecType) &&
                    std::all_of(fBlocks.begin(), fBlocks.end(), [&](const BitmapDataBlock* block) {
                      return pass.IsShownBy(*block);
                    });
  if (!good) throw RecordError("its message does not decode to its pixels");
}

}  // namespace zlibvideo
