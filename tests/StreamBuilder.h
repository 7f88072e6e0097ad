#ifndef ZLIBVIDEO_TESTS_STREAMBUILDER_H
#define ZLIBVIDEO_TESTS_STREAMBUILDER_H

#include <zlib.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <random>
#include <vector>

#include "bitstream/FrameHeader.h"
#include "bitstream/MessageBody.h"
#include "grid/BlockFormat.h"

/// Makes messages, good and damaged: a message holds exactly the fields given.
namespace zlibvideo {

using Bytes = std::vector<unsigned char>;

inline Bytes Noise(std::size_t size, unsigned int start) {
  std::mt19937 random(start);
  Bytes bytes(size);
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random() & 0xFF);
  return bytes;
}

// Byte by byte: GCC 12 at -O3 warns about the copy inside vector::insert where a size is known.
inline void Append(Bytes* bytes, const Bytes& more) {
  std::copy(more.begin(), more.end(), std::back_inserter(*bytes));
}

inline void AppendU16(Bytes* bytes, std::size_t value) {
  bytes->push_back(static_cast<unsigned char>(value >> 8 & 0xFF));
  bytes->push_back(static_cast<unsigned char>(value & 0xFF));
}

inline Bytes Slice(const Bytes& bytes, std::ptrdiff_t from, std::ptrdiff_t to) {
  return Bytes(bytes.begin() + from, bytes.begin() + to);
}

/// `bytes` with another last byte.
inline Bytes Damaged(Bytes bytes) {
  bytes.back() ^= 1;
  return bytes;
}

inline Bytes Compress(const Bytes& data, const Bytes& dictionary, int windowBits) {
  z_stream stream = {};
  Bytes result(data.size() + data.size() / 8 + 64);
  deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY);
  const auto dictionarySize = static_cast<uInt>(dictionary.size());
  if (dictionarySize != 0) deflateSetDictionary(&stream, dictionary.data(), dictionarySize);
  stream.next_in = const_cast<Bytef*>(data.data());
  stream.avail_in = static_cast<uInt>(data.size());
  stream.next_out = result.data();
  stream.avail_out = static_cast<uInt>(result.size());
  deflate(&stream, Z_FINISH);
  result.resize(stream.total_out);
  deflateEnd(&stream);
  return result;
}

/// A whole zlib stream. A dictionary becomes a preset dictionary, which its header demands.
inline Bytes Zlib(const Bytes& data, const Bytes& dictionary = {}) {
  return Compress(data, dictionary, MAX_WBITS);
}

/// A raw deflate stream. It continues from the last 32 KiB of the dictionary.
inline Bytes RawDeflate(const Bytes& data, const Bytes& dictionary = {}) {
  return Compress(data, dictionary, -MAX_WBITS);
}

struct Band {
  int start = 0;
  int rows = 0;
};

/// Bits of `Record::format`.
namespace formats {
inline constexpr int kDirect = 0;
inline constexpr int kPrimed = kFormatPrimed;
inline constexpr int kIntermediate = kFormatIntermediate;
inline constexpr int kBanded = kFormatDiffRows;
inline constexpr int kReduced = kFormatColorReduced;
inline constexpr int kColorField3 = kFormatColorMask;
inline constexpr int kColorField1 = kColorField3 - kReduced;
inline constexpr int kUnreadBits = 0xE0;
static_assert(kPrimed == 0x01 && kIntermediate == 0x02 && kBanded == 0x04 && kReduced == 0x10 &&
              kColorField3 == 0x18);
}  // namespace formats

/// A block record. By default an empty record.
struct Record {
  std::optional<int> format = {};  // for version 2
  std::optional<Band> band = {};   // for version 2
  Bytes payload = {};
  std::optional<std::size_t> claimedSize = {};  // in place of the true size

  Bytes Build() const {
    Bytes body;
    if (format) body.push_back(static_cast<unsigned char>(*format));
    if (band) AppendU16(&body, static_cast<std::size_t>(band->start << 8 | band->rows));
    Append(&body, payload);
    Bytes record;
    AppendU16(&record, claimedSize.value_or(body.size()));
    Append(&record, body);
    return record;
  }
};

inline FrameHeader Header(int codecType, int imageWidth, int imageHeight, int blockWidth,
                          int blockHeight) {
  return {FrameHeader::kKeyFrameType, codecType, imageWidth, imageHeight, blockWidth, blockHeight};
}

struct Message {
  FrameHeader header = {};
  unsigned int flags = 0;             // for version 2
  std::optional<Bytes> palette = {};  // for version 2: compressed, sets its flag
  std::vector<Record> records = {};   // of all blocks of each pass
  Bytes rest = {};                    // after the last record

  Bytes Build() const {
    Bytes message(FrameHeader::kSize);
    header.Write(*reinterpret_cast<unsigned char(*)[FrameHeader::kSize]>(message.data()));
    if (header.codecType == kCodecTypeVersion2) {
      message.push_back(static_cast<unsigned char>(flags | (palette ? kFlagPalette : 0)));
      if (palette) AppendU16(&message, palette->size());
      Append(&message, palette.value_or(Bytes{}));
    }
    for (const Record& record : records) Append(&message, record.Build());
    Append(&message, rest);
    return message;
  }
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_STREAMBUILDER_H
