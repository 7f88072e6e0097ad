#ifndef ZLIBVIDEO_BENCH_BENCH_H
#define ZLIBVIDEO_BENCH_BENCH_H

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "decoder/ZLibVideoDecompressor.h"
#include "host/standin/StandInVideoObject.h"

namespace zlibvideo::bench {

using Bytes = std::vector<unsigned char>;

/// A recorded stream in memory.
struct Stream {
  /// File name without folder and extension.
  std::string name;
  std::vector<Bytes> messages;
};

/// A decoder with a bitmap to draw into.
class Player : public ZLibVideoDecompressor {
 public:
  Player() : ZLibVideoDecompressor(nullptr, nullptr) {}

  /// Throws `std::runtime_error` if the message does not decode.
  void Decode(const Bytes& message, bool skipPush = false) {
    auto* bytes = const_cast<unsigned char*>(message.data());  // the decoder only reads them
    if (!DecompressVideo(fVideo.Ref(), bytes, message.size(), skipPush)) {
      throw std::runtime_error("a message does not decode");
    }
  }
  /// Decodes and draws all messages in order.
  void Decode(const Stream& stream) {
    for (const Bytes& message : stream.messages) Decode(message);
  }

  StandInBitmap& Bitmap() { return fVideo.Bitmap(); }
  std::span<const BitmapDataBlock* const> Blocks() const {
    return {fBlocks, static_cast<std::size_t>(fGridWidth * fGridHeight)};
  }

 private:
  StandInVideoObject fVideo;
};

/// The time that this program's calls of zlib take. ZlibClock.cpp measures it. From now on, each
/// call reads the clock before and after.
void StartZlibClock();
/// Returns the seconds since the start, without the time for reading the clock.
double StopZlibClock();

/// Messages/NAME/GROUP/DRAWING: a stream's messages against their floor, which is zlib's time and
/// a memcpy of the pixels drawn. `stream` must outlive these benchmarks and all below.
void RegisterMessages(const Stream& stream);
/// Files/NAME/FORMAT: a stream's pictures as files of other formats.
void RegisterPictureFiles(const Stream& stream);
/// Convert/NAME: conversion of a stream's colour-reduced pixels, if it has any.
void RegisterConversion(const Stream& stream);

}  // namespace zlibvideo::bench

#endif  // ZLIBVIDEO_BENCH_BENCH_H
