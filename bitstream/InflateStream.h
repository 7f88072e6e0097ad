#ifndef ZLIBVIDEO_BITSTREAM_INFLATESTREAM_H
#define ZLIBVIDEO_BITSTREAM_INFLATESTREAM_H

#include <zlib.h>

#include <array>

#include "bitstream/ByteSpan.h"

struct BitmapDataBlock;

namespace zlibvideo {

/// The frame around compressed data.
enum class StreamForm {
  kZlib,        ///< header and check value, RFC 1950
  kRawDeflate,  ///< nothing, RFC 1951
};

/// An inflate stream of zlib, opened at most once and released on every way out. zlib's state
/// comes from zlib's own allocator, not from the host's.
class InflateStream {
 public:
  InflateStream() = default;
  InflateStream(const InflateStream&) = delete;
  InflateStream& operator=(const InflateStream&) = delete;
  ~InflateStream();

  /// Prepares for a stream of `form`. False if zlib has no memory, or has another interface than
  /// the component was compiled for. Then only `Close` may follow.
  [[nodiscard]] bool Open(StreamForm form);

  /// Feeds a dictionary to a raw stream, before the payload that continues after it: as stored
  /// blocks of at most `kMaxStoredBlock` bytes, which zlib copies to its history and, without
  /// gaps, to `output`. False if the dictionary is empty or zlib refuses any of it. A stored
  /// block that the room cuts short is not refused: zlib then reads the bytes that it misses from
  /// the payload.
  [[nodiscard]] bool Prime(ByteSpan dictionary, unsigned char* output, unsigned int room);

  /// Feeds `input` and writes at most `room` bytes to `output`. Input that is left when the room is
  /// full is dropped. `flush` and the result are zlib's.
  [[nodiscard]] int Inflate(ByteSpan input, unsigned char* output, unsigned int room, int flush);

  /// Bytes written since the stream was opened, by all calls, counted in 32 bits.
  unsigned int TotalOutput() const { return static_cast<unsigned int>(fStream.total_out); }

  /// Releases the stream. False if zlib finds its state damaged. True if the stream is not open.
  [[nodiscard]] bool Close();

 private:
  bool PrimeOneBlock(ByteSpan piece, unsigned char* output, unsigned int room);

  z_stream fStream = {};
  bool fOpen = false;
};

/// The most bytes that a stored block of RFC 1951 can carry.
inline constexpr unsigned int kMaxStoredBlock = 0xFFFF;
inline constexpr unsigned int kStoredBlockHeaderSize = 5;

/// The header of a stored block of `length` bytes that is not the last block of its stream: block
/// type and padding, the length, and its complement, least significant bytes first.
std::array<unsigned char, kStoredBlockHeaderSize> StoredBlockHeader(unsigned int length);

/// The dictionary of a primed payload of this format for `block`: the previous data for 3-byte
/// pixels, otherwise the converted data or, if there is no converted data, the previous data. May
/// be empty. Valid until the block's reference data changes.
ByteSpan PrimingDictionary(const BitmapDataBlock& block, unsigned int format);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_INFLATESTREAM_H
