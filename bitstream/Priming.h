#ifndef ZLIBVIDEO_BITSTREAM_PRIMING_H
#define ZLIBVIDEO_BITSTREAM_PRIMING_H

#include <array>

#include "bitstream/ByteSpan.h"
#include "bitstream/InflateStream.h"

struct BitmapDataBlock;

namespace zlibvideo {

/// A primed payload continues a deflate stream whose beginning is not sent: the dictionary, which
/// both sides hold. The decoder replays it as stored blocks (RFC 1951), so that it enters
/// the history of the stream, and with it the destination.

/// Bytes that one stored block can carry.
inline constexpr unsigned int kMaxStoredBlock = 0xFFFF;
inline constexpr unsigned int kStoredBlockHeaderSize = 5;

/// Header of a stored block of `length` bytes that is not the last block of its stream: block type
/// and padding, the length, and its complement, least significant bytes first.
std::array<unsigned char, kStoredBlockHeaderSize> StoredBlockHeader(unsigned int length);

/// The dictionary of a primed payload of this format for `block`: the previous data for 3-byte
/// pixels; the converted data otherwise, or the previous data when there is none. Empty when there
/// is nothing to prime with. Valid until the block's reference data changes.
ByteSpan PrimingDictionary(const BitmapDataBlock& block, unsigned int format);

/// Feeds a dictionary to a raw stream: as stored blocks of at most `kMaxStoredBlock` bytes that
/// land one after the other from the start of `output`. False when the dictionary is
/// empty or the stream refuses any of it. A stored block that the room cuts short is not refused:
/// the stream then takes the bytes that it still misses from the payload.
[[nodiscard]] bool Prime(InflateStream* stream, ByteSpan dictionary, unsigned char* output,
                         unsigned int room);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_PRIMING_H
