#ifndef ZLIBVIDEO_BITSTREAM_FRAMEHEADER_H
#define ZLIBVIDEO_BITSTREAM_FRAMEHEADER_H

#include "../host/Export.h"
#include "ByteCursor.h"

namespace zlibvideo {

/// The codec types that are decoded. A message of any other is walked as version 1 without changing
/// a block.
inline constexpr int kCodecTypeVersion1 = 3;
inline constexpr int kCodecTypeVersion2 = 6;

/// The five bytes that open every video message:
///
///   byte 0   frame type (high nibble), codec type (low nibble)
///   byte 1   block width code (high nibble), image width bits 11-8 (low nibble)
///   byte 2   image width bits 7-0
///   byte 3   block height code (high nibble), image height bits 11-8 (low nibble)
///   byte 4   image height bits 7-0
///
/// A block size code c stands for (c + 1) × 16 pixels.
struct ZLIBVIDEO_EXPORT FrameHeader {
  static constexpr unsigned int kSize = 5;
  /// A message shorter than this, in bytes, is not decoded.
  static constexpr unsigned int kMinMessageSize = 7;
  static constexpr int kInvalidFrameType = 0;
  static constexpr int kKeyFrameType = 1;
  static constexpr int kMaxImageSize = 4095;
  static constexpr int kBlockSizeStep = 16;
  static constexpr int kMaxBlockSize = 256;

  int frameType = 0;
  int codecType = 0;
  /// Pixels. 0 makes the header invalid.
  int imageWidth = 0;
  int imageHeight = 0;
  /// Pixels, 16 to 256 in steps of 16.
  int blockWidth = 0;
  int blockHeight = 0;

  bool IsKeyFrame() const { return frameType == kKeyFrameType; }
  /// Whether a message with this header can be decoded at all.
  bool IsValid() const {
    return frameType != kInvalidFrameType && imageWidth != 0 && imageHeight != 0;
  }

  /// Reads the header, valid or not. False if fewer than `kSize` bytes remain. Then nothing is
  /// read.
  [[nodiscard]] static bool Read(ByteCursor* cursor, FrameHeader* header);
  /// The inverse of `Read`, for encoders. Fields must be in range.
  void Write(unsigned char (&bytes)[kSize]) const;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_BITSTREAM_FRAMEHEADER_H
