#include "fuzz/Mutation.h"

#include "bitstream/InflateStream.h"
#include "grid/BlockFormat.h"
#include "grid/Sizes.h"

namespace zlibvideo {
namespace {

void MutateBytes(Bytes* bytes) {
  const std::size_t size = bytes->size();
  bytes->resize(size + size / 4 + 16);
  bytes->resize(LLVMFuzzerMutate(bytes->data(), size, bytes->size()));
}

Bytes Inflate(const BitmapDataBlock& block, unsigned int format, ByteSpan payload) {
  constexpr unsigned int kMaxContent = 1 << 16;
  const bool primed = IsPrimed(format);
  const ByteSpan dictionary = primed ? PrimingDictionary(block, format) : ByteSpan();
  Bytes content(dictionary.size + kMaxContent);
  InflateStream stream;
  if (!stream.Open(primed ? StreamForm::kRawDeflate : StreamForm::kZlib)) return {};
  if (primed && !stream.Prime(dictionary, content.data(), SpanOf(content).size)) return {};
  static_cast<void>(
      stream.Inflate(payload, content.data() + dictionary.size, kMaxContent, Z_SYNC_FLUSH));
  return {content.begin() + dictionary.size, content.begin() + stream.TotalOutput()};
}

/// More often than not the band suits the block.
void MutateHeader(const BitmapDataBlock& block, BlockHeader* header, Random* random) {
  const auto any = [random] { return static_cast<std::uint8_t>(Below(256, random)); };
  const auto rows = static_cast<unsigned int>(block.fHeight);
  const unsigned int start = Below(rows, random);
  const unsigned int count = Below(rows - start + 2, random);
  if (OneIn(2, random)) header->format = any();
  header->diffRowStart = OneIn(16, random) ? any() : static_cast<std::uint8_t>(start);
  header->diffRowCount = OneIn(16, random) ? any() : static_cast<std::uint8_t>(count);
}

}  // namespace

Bytes MutatePayload(const BitmapDataBlock& block, ByteSpan payload, BlockHeader* header,
                    bool withHeader, Random* random) {
  Bytes content = Inflate(block, header->format, payload);
  if (withHeader) MutateHeader(block, header, random);
  // Sizes at which something changes: the band, the block, the room for it.
  const int row = block.fWidth * kBlockPixelBytes;
  const int sizes[] = {0, row * header->diffRowCount, row * block.fHeight, block.fRawDataCapacity};
  const auto size = static_cast<unsigned int>(sizes[Below(4, random)]);
  if (size != 0) content.resize(size + Below(2, random), static_cast<unsigned char>((*random)()));
  if (size == 0 || OneIn(2, random)) MutateBytes(&content);

  // Without priming, a dictionary makes a zlib stream that asks for it.
  const bool primed = IsPrimed(header->format);
  const ByteSpan prior =
      primed || OneIn(16, random) ? PrimingDictionary(block, header->format) : ByteSpan();
  Bytes result = primed ? RawDeflate(content, CopyOf(prior)) : Zlib(content, CopyOf(prior));
  if (OneIn(16, random)) MutateBytes(&result);
  if (OneIn(16, random)) result.resize(Below(result.size() + 1, random));
  return OneIn(32, random) ? Bytes() : result;
}

}  // namespace zlibvideo
