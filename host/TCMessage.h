#ifndef ZLIBVIDEO_HOST_TCMESSAGE_H
#define ZLIBVIDEO_HOST_TCMESSAGE_H

/// A video message as the host delivers it. The host owns the payload and must not change it
/// during the call that the message is passed to.
struct TCMessage {
  static constexpr int kLengthBytes = 3;

  unsigned char* fPayload = nullptr;
  /// Payload length in bytes, unsigned 24-bit, most significant byte first.
  unsigned char fPayloadLength[kLengthBytes] = {};
};

#endif  // ZLIBVIDEO_HOST_TCMESSAGE_H
