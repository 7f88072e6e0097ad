#ifndef ZLIBVIDEO_HOST_STANDIN_STANDINMESSAGE_H
#define ZLIBVIDEO_HOST_STANDIN_STANDINMESSAGE_H

#include <cstdint>

#include "../TCMessage.h"

/// A message over bytes that somebody else owns and keeps.
class StandInMessage : public TCMessage {
 public:
  static constexpr std::uint32_t kMaxLength = 0xFFFFFF;

  /// `length` bytes at `payload`, at most `kMaxLength`.
  StandInMessage(unsigned char* payload, std::uint32_t length) {
    fPayload = payload;
    fPayloadLength[0] = static_cast<unsigned char>(length >> 16 & 0xFF);
    fPayloadLength[1] = static_cast<unsigned char>(length >> 8 & 0xFF);
    fPayloadLength[2] = static_cast<unsigned char>(length & 0xFF);
  }
};

#endif  // ZLIBVIDEO_HOST_STANDIN_STANDINMESSAGE_H
