#ifndef ZLIBVIDEO_TOOLS_RECORD_BLOCKENCODER_H
#define ZLIBVIDEO_TOOLS_RECORD_BLOCKENCODER_H

#include <cstddef>
#include <vector>

#include "bitstream/ByteSpan.h"
#include "bitstream/MessageBody.h"
#include "grid/BitmapDataBlock.h"
#include "tools/record/RecordOptions.h"
#include "tools/record/ReducedColors.h"

namespace zlibvideo {

/// Bytes in a row of a block's buffer.
unsigned int RowBytes(const BitmapDataBlock& block);

/// The content of a block record.
struct BlockPayload {
  BlockHeader header;
  std::vector<unsigned char> bytes;

  /// Value of the record's size field in a stream of this codec type.
  std::size_t RecordSize(int codecType) const;
};

/// Finds the smallest payload that turns a block of the decoder into given pixels. Several threads
/// can use an encoder at once.
///
/// Some forms are never tried: for a block with a reference, forms without its dictionary or with
/// unchanged rows; for a direct payload in reduced colours, 3-byte pixels. On recordings of a
/// desktop, trying them all gains a hundredth of a percent.
class BlockEncoder {
 public:
  /// The forms that a payload may have besides direct 3-byte pixels.
  struct Forms {
    /// Primed forms and bands, which need the block's reference data.
    bool intermediate = false;
    /// Colour-reduced forms, in these colours. Null without them. All pixels must be of these
    /// colours.
    const ReducedColors* colors = nullptr;
  };

  explicit BlockEncoder(const RecordOptions& options)
      : fCodecType(options.codecType), fRenewPercent(options.renewPercent), fLevel(options.level) {}

  /// The smallest payload for `pixels`, laid out as in a block's buffer, and a block in this
  /// state. A direct payload wins a tie, or as much more as the options allow, because it renews
  /// the reference data. The payload may be too large for a record.
  BlockPayload Encode(const BitmapDataBlock& block, ByteSpan pixels, const Forms& forms) const;

 private:
  struct Band;

  static Band ChangedRows(const BitmapDataBlock& block, ByteSpan pixels);
  BlockPayload Direct(ByteSpan pixels, const ReducedColors* colors) const;
  BlockPayload Primed(const BitmapDataBlock& block, ByteSpan pixels, Band band,
                      const ReducedColors* colors) const;
  bool IsPreferred(const BlockPayload& direct, const BlockPayload& intermediate) const;

  int fCodecType;
  unsigned int fRenewPercent;
  int fLevel;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_BLOCKENCODER_H
