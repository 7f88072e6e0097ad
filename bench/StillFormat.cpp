#include "bench/StillFormat.h"

#include <png.h>
#include <webp/decode.h>
#include <webp/encode.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>

#include "host/BitmapPixel.h"

namespace zlibvideo::bench {
namespace {

/// libwebp's lossless presets go from 0, fast, to 9, small. Level 6 is about what its simple
/// interface encodes with.
constexpr int kWebpLevel = 6;

Bytes WithoutOpacity(std::span<const unsigned char> pixels) {
  Bytes colours;
  colours.reserve(pixels.size());
  for (std::size_t i = 0; i < pixels.size(); i += kBitmapPixelBytes) {
    colours.insert(colours.end(), {pixels[i], pixels[i + 1], pixels[i + 2]});
  }
  return colours;
}

Bytes EncodePng(const StandInBitmap& picture, png_uint_32 flags) {
  const Bytes colours = WithoutOpacity(picture.Pixels());
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(picture.GetWidth());
  image.height = static_cast<png_uint_32>(picture.GetHeight());
  image.format = PNG_FORMAT_BGR;
  image.flags = flags;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  Bytes file(size);
  if (png_image_write_to_memory(&image, file.data(), &size, 0, colours.data(), 0, nullptr) == 0) {
    throw std::runtime_error(std::string("cannot be encoded as PNG: ") + image.message);
  }
  file.resize(size);
  return file;
}

Bytes EncodeDefaultPng(const StandInBitmap& picture) {
  return EncodePng(picture, 0);
}
Bytes EncodeFastPng(const StandInBitmap& picture) {
  return EncodePng(picture, PNG_IMAGE_FLAG_FAST);
}

void DecodePng(const Bytes& file, int /*width*/, Bytes* pixels) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  int done = png_image_begin_read_from_memory(&image, file.data(), file.size());
  image.format = PNG_FORMAT_BGRA;
  if (done != 0 && PNG_IMAGE_SIZE(image) == pixels->size()) {
    done = png_image_finish_read(&image, nullptr, pixels->data(), 0, nullptr);
  }
  png_image_free(&image);
  if (done == 0) throw std::runtime_error(std::string("cannot be read as PNG: ") + image.message);
}

Bytes EncodeWebp(const StandInBitmap& bitmap) {
  WebPConfig config;
  WebPPicture picture;
  if (WebPConfigInit(&config) == 0 || WebPConfigLosslessPreset(&config, kWebpLevel) == 0 ||
      WebPPictureInit(&picture) == 0) {
    throw std::runtime_error("libwebp is not the version that this program was built with");
  }
  const std::unique_ptr<WebPPicture, void (*)(WebPPicture*)> pictureOwner(&picture,
                                                                          WebPPictureFree);
  WebPMemoryWriter writer;
  WebPMemoryWriterInit(&writer);
  const std::unique_ptr<WebPMemoryWriter, void (*)(WebPMemoryWriter*)> writerOwner(
      &writer, WebPMemoryWriterClear);
  picture.use_argb = 1;
  picture.width = bitmap.GetWidth();
  picture.height = bitmap.GetHeight();
  picture.writer = WebPMemoryWrite;
  picture.custom_ptr = &writer;
  const int stride = picture.width * static_cast<int>(kBitmapPixelBytes);
  if (WebPPictureImportBGRX(&picture, bitmap.Pixels().data(), stride) == 0 ||
      WebPEncode(&config, &picture) == 0) {
    throw std::runtime_error("cannot be encoded as WebP");
  }
  return {writer.mem, writer.mem + writer.size};
}

void DecodeWebp(const Bytes& file, int width, Bytes* pixels) {
  if (WebPDecodeBGRAInto(file.data(), file.size(), pixels->data(), pixels->size(),
                         width * static_cast<int>(kBitmapPixelBytes)) == nullptr) {
    throw std::runtime_error("cannot be read as WebP");
  }
}

std::string WebpVersion() {
  const auto version = static_cast<unsigned int>(WebPGetDecoderVersion());
  return std::to_string(version >> 16) + "." + std::to_string(version >> 8 & 0xFF) + "." +
         std::to_string(version & 0xFF);
}

}  // namespace

const std::array<StillFormat, StillFormat::kCount>& StillFormat::All() {
  static const std::string png = std::string("libpng ") + png_get_libpng_ver(nullptr);
  static const std::array<StillFormat, kCount> formats = {{
      {"PNG", png + ", its default row filters, zlib's default level", EncodeDefaultPng, DecodePng},
      {"fast-PNG", png + ", PNG_IMAGE_FLAG_FAST: no row filters, zlib's level 3", EncodeFastPng,
       DecodePng},
      {"WebP", "libwebp " + WebpVersion() + ", lossless preset " + std::to_string(kWebpLevel),
       EncodeWebp, DecodeWebp},
  }};
  return formats;
}

}  // namespace zlibvideo::bench
