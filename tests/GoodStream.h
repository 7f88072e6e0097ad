#ifndef ZLIBVIDEO_TESTS_GOODSTREAM_H
#define ZLIBVIDEO_TESTS_GOODSTREAM_H

#include <algorithm>

#include "tests/SameBytes.h"
#include "tests/StreamBuilder.h"

namespace zlibvideo {

/// A picture: the pixels of its blocks, in grid order.
struct PlainPicture {
  FrameHeader header;
  std::vector<Bytes> blocks = {};

  PlainPicture(const FrameHeader& geometry, unsigned int start) : header(geometry) {
    for (int y = 0; y < header.imageHeight; y += header.blockHeight) {
      for (int x = 0; x < header.imageWidth; x += header.blockWidth) {
        const int pixels = WidthAt(x) * std::min(header.blockHeight, header.imageHeight - y);
        blocks.push_back(Noise(static_cast<std::size_t>(pixels * 3), start++));
      }
    }
  }

  /// Width of the blocks that cover column x.
  int WidthAt(int x) const {
    return std::min(header.blockWidth, header.imageWidth - x + x % header.blockWidth);
  }

  /// Sends every block as a whole zlib stream.
  Message Whole() const {
    Message message{.header = header};
    for (const Bytes& block : blocks) {
      message.records.push_back({.payload = Zlib(block)});
      if (header.codecType == kCodecTypeVersion2) message.records.back().format = formats::kDirect;
    }
    return message;
  }

  /// The bitmap of the picture, found pixel by pixel.
  BitmapPixels Bitmap() const {
    Bytes bitmap;
    const int columns = (header.imageWidth - 1) / header.blockWidth + 1;
    for (int y = header.imageHeight - 1; y >= 0; --y) {
      for (int x = 0; x < header.imageWidth; ++x) {
        const int index = y / header.blockHeight * columns + x / header.blockWidth;
        const int pixel = y % header.blockHeight * WidthAt(x) + x % header.blockWidth;
        const auto from = blocks[static_cast<std::size_t>(index)].begin() + pixel * 3;
        bitmap.insert(bitmap.end(), from, from + 3);
        bitmap.push_back(255);
      }
    }
    return {header.imageWidth, bitmap};
  }
};

/// A palette before compression: colour i is red i, green 2i, blue 255 - i.
inline Bytes PaletteColors() {
  Bytes colors;
  for (int i = 0; i < 128; ++i) {
    for (const int part : {i, 2 * i, 255 - i}) colors.push_back(static_cast<unsigned char>(part));
  }
  return colors;
}

/// The codes of `block`, by turns an index and a colour. Every pixel becomes the colour of its code
/// under `PaletteColors`.
inline Bytes ReduceColors(Bytes* block) {
  Bytes codes;
  for (std::size_t i = 0; i < block->size(); i += 3) {
    unsigned char* pixel = block->data() + i;
    if (i % 2 == 0) {
      codes.push_back(pixel[2] &= 127);
      pixel[1] = static_cast<unsigned char>(2 * pixel[2]);
      pixel[0] = static_cast<unsigned char>(255 - pixel[2]);
    } else {
      for (int part = 0; part < 3; ++part) pixel[part] &= 0xF8;
      AppendU16(&codes, 0x8000u | pixel[2] / 8u * 1024 | pixel[1] / 8u * 32 | pixel[0] / 8u);
    }
  }
  return codes;
}

struct Step {
  Bytes message;
  BitmapPixels bitmap;
};

/// Messages that use every part of both versions, each with its picture.
inline std::vector<Step> GoodStream() {
  std::vector<Step> steps;
  const auto add = [&steps](const PlainPicture& picture, Message message) {
    message.header = picture.header;
    steps.push_back({message.Build(), picture.Bitmap()});
  };
  PlainPicture picture(Header(kCodecTypeVersion1, 40, 24, 16, 16), 100);
  add(picture, picture.Whole());

  // Two passes: every block direct, then two of its rows against the pixels of the first pass.
  picture = PlainPicture(Header(kCodecTypeVersion2, 40, 24, 16, 16), 300);
  Message message = picture.Whole();
  message.flags = kFlagSecondPass;
  for (std::size_t i = 0; i < 6; ++i) {
    Bytes& block = picture.blocks[i];
    const std::ptrdiff_t row = i % 3 == 2 ? 24 : 48;
    const Bytes rows(block.begin(), block.begin() + row * 2);
    message.records.push_back(
        {formats::kPrimed | formats::kBanded, Band{3, 2}, RawDeflate(rows, block)});
    std::copy(rows.begin(), rows.end(), block.begin() + row * 3);
  }
  add(picture, message);

  // Colour-reduced. Then version 1, which leaves the reference data of version 2 alone: afterwards
  // a block is primed with its earlier codes, and a band of another with its earlier pixels. At
  // last another geometry, for which the palette still holds.
  message = {.palette = Zlib(PaletteColors())};
  for (Bytes& block : picture.blocks)
    message.records.push_back({formats::kReduced, {}, Zlib(ReduceColors(&block))});
  add(picture, message);
  Bytes turned = picture.blocks[0];
  const Bytes before = picture.blocks[1], codes = ReduceColors(&turned);
  std::rotate(turned.begin(), turned.begin() + 48, turned.end());
  const Bytes row(before.end() - 48, before.end());
  picture = PlainPicture(Header(kCodecTypeVersion1, 40, 24, 16, 16), 700);
  add(picture, picture.Whole());
  message = {.records = std::vector<Record>(6)};
  message.records[0] = {
      formats::kPrimed | formats::kReduced, {}, RawDeflate(ReduceColors(&turned), codes)};
  message.records[1] = {formats::kPrimed | formats::kBanded, Band{7, 1}, RawDeflate(row, before)};
  picture.header.codecType = kCodecTypeVersion2;
  picture.blocks[0] = turned;
  picture.blocks[1] = before;
  std::copy(row.begin(), row.end(), picture.blocks[1].begin() + 7 * 48);
  add(picture, message);
  picture = PlainPicture(Header(kCodecTypeVersion2, 33, 20, 32, 16), 500);
  message.records.clear();
  for (Bytes& b : picture.blocks)
    message.records.push_back({formats::kReduced, {}, Zlib(ReduceColors(&b))});
  add(picture, message);
  return steps;
}

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TESTS_GOODSTREAM_H
