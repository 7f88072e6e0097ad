// Mutates message files: records stay in step with their header, and what precedes a message is
// decoded, so that its payloads can be primed with the data that a decoder will have then.

#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"
#include "fuzz/Mutation.h"
#include "grid/BlockFormat.h"
#include "grid/Sizes.h"
#include "tools/stream/InspectingDecoder.h"

namespace zlibvideo {
namespace {

void Decode(InspectingDecoder* decoder, Bytes message) {
  FrameHeader header;
  if (!ReadSmallHeader(message, &header)) return;
  static_cast<void>(decoder->DecompressVideo(nullptr, message.data(), message.size(), true));
}

void MutateHeader(FrameHeader* header, Random* random) {
  const auto choose = [random](unsigned int usual, unsigned int most) {
    return static_cast<int>(1 + Below(OneIn(4, random) ? most : usual, random));
  };
  const int types[] = {kCodecTypeVersion1, kCodecTypeVersion2, kCodecTypeVersion2, choose(15, 15)};
  if (OneIn(2, random)) {
    *header = Header(0, choose(40, 256), choose(40, 256), 16 * choose(2, 16), 16 * choose(2, 16));
  }
  header->frameType = choose(15, 15);
  header->codecType = types[OneIn(8, random) ? 3 : Below(3, random)];
}

/// A record for `block` with what `read` holds, mutated or as it is.
Record MakeRecord(const BitmapDataBlock& block, int codecType, const BlockRecord& read, bool mutate,
                  Random* random) {
  const bool hasHeader = codecType == kCodecTypeVersion2;
  BlockHeader header = read.header;
  Record record;
  if (mutate ? OneIn(8, random) : read.IsEmpty()) return record;
  record.payload = mutate ? MutatePayload(block, read.payload, &header, hasHeader, random)
                          : CopyOf(read.payload);
  if (hasHeader) record.format = header.format;
  if (hasHeader && HasBand(header.format)) {
    record.band = {header.diffRowStart, header.diffRowCount};
  }
  return record;
}

/// Copies one pass and changes some records. Those missing after a change of geometry are made up.
void MutatePass(const InspectingDecoder& decoder, ByteCursor* in, Message* out, Random* random) {
  const unsigned int rarity = 1 + Below(8, random);
  for (int row = 0; decoder.FindBlock(row, 0) != nullptr; ++row) {
    for (int column = 0; decoder.FindBlock(row, column) != nullptr; ++column) {
      BlockRecord read;
      const bool present = BlockRecord::Read(in, out->header.codecType, &read);
      if (!present) {
        *in = ByteCursor(nullptr, 0);
        read = {};
      }
      out->records.push_back(MakeRecord(*decoder.FindBlock(row, column), out->header.codecType,
                                        read, !present || OneIn(rarity, random), random));
    }
  }
}

Bytes MutateMessage(InspectingDecoder* decoder, const Bytes& message, Random* random) {
  Message out;
  if (!ReadSmallHeader(message, &out.header) || !out.header.IsValid()) {
    out.header = Header(kCodecTypeVersion2, 1, 1, 16, 16);
  }
  if (OneIn(4, random)) MutateHeader(&out.header, random);
  Require(decoder->SetupCodec(out.header.imageWidth, out.header.imageHeight, out.header.blockWidth,
                              out.header.blockHeight));
  ByteCursor in(SpanOf(message));
  static_cast<void>(in.Skip(FrameHeader::kSize));
  std::uint8_t flags = 0;
  if (out.header.codecType == kCodecTypeVersion2 && (!in.ReadU8(&flags) || OneIn(4, random))) {
    flags = static_cast<std::uint8_t>((*random)());
  }
  out.flags = flags;
  if ((flags & kFlagPalette) != 0) {
    ByteSpan old;
    static_cast<void>(ReadPaletteRecord(&in, &old));
    const unsigned int size = OneIn(4, random) ? Below(2000, random) : kPaletteBytes;
    out.palette = Zlib(Noise(size, Below(256, random)));
  }
  MutatePass(*decoder, &in, &out, random);
  if ((flags & kFlagSecondPass) != 0) {
    Decode(decoder, out.Build());
    MutatePass(*decoder, &in, &out, random);
  }
  return out.Build();
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned int number) {
  Random random(number);
  if (OneIn(8, &random)) return LLVMFuzzerMutate(data, size, maxSize);
  std::vector<Bytes> messages = SplitMessages({data, static_cast<unsigned int>(size)});
  const unsigned int index = Below(messages.size() + 1, &random);
  if (index == messages.size()) messages.push_back(index == 0 ? Bytes() : Bytes(messages.back()));
  if (OneIn(12, &random)) messages.erase(messages.begin() + index / 2);
  InspectingDecoder decoder(nullptr, nullptr);
  Bytes file;
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if (i == index) messages[i] = MutateMessage(&decoder, messages[i], &random);
    Decode(&decoder, messages[i]);
    file.push_back(static_cast<unsigned char>(messages[i].size() >> 16));
    AppendU16(&file, messages[i].size());
    Append(&file, messages[i]);
  }
  if (file.empty() || file.size() > maxSize) return LLVMFuzzerMutate(data, size, maxSize);
  std::copy(file.begin(), file.end(), data);
  return file.size();
}

}  // namespace zlibvideo
