// The pictures of streams as files of lossless formats for single pictures.

#include <benchmark/benchmark.h>
#include <png.h>
#include <webp/decode.h>
#include <webp/encode.h>

#include <algorithm>
#include <cstdint>
#include <functional>

#include "bench/Bench.h"
#include "host/BitmapPixel.h"

namespace zlibvideo::bench {
namespace {

constexpr int kRounds = 7;

Bytes EncodePng(const StandInBitmap& picture, png_uint_32 flags) {
  Bytes colours;  // without opacity
  for (std::size_t i = 0; i < picture.Pixels().size(); i += kBitmapPixelBytes) {
    const unsigned char* pixel = picture.Pixels().data() + i;
    colours.insert(colours.end(), {pixel[0], pixel[1], pixel[2]});
  }
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(picture.GetWidth());
  image.height = static_cast<png_uint_32>(picture.GetHeight());
  image.format = PNG_FORMAT_BGR;
  image.flags = flags;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
  Bytes file(size);
  png_image_write_to_memory(&image, file.data(), &size, 0, colours.data(), 0, nullptr);
  file.resize(size);
  return file;
}

void DecodePng(const Bytes& file, StandInBitmap* bitmap) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  png_image_begin_read_from_memory(&image, file.data(), file.size());
  image.format = PNG_FORMAT_BGRA;
  png_image_finish_read(&image, nullptr, bitmap->GetBMBaseAddr(), 0, nullptr);
}

Bytes EncodeWebp(const StandInBitmap& picture, png_uint_32 /*flags*/) {
  std::uint8_t* bytes = nullptr;
  const std::size_t size =
      WebPEncodeLosslessBGRA(picture.Pixels().data(), picture.GetWidth(), picture.GetHeight(),
                             picture.GetRowLength(), &bytes);
  Bytes file(bytes, bytes + size);
  WebPFree(bytes);
  return file;
}

void DecodeWebp(const Bytes& file, StandInBitmap* bitmap) {
  WebPDecodeBGRAInto(file.data(), file.size(), bitmap->GetBMBaseAddr(), bitmap->Pixels().size(),
                     bitmap->GetRowLength());
}

struct PictureFormat {
  const char* name;
  Bytes (*encode)(const StandInBitmap& picture, png_uint_32 flags);
  png_uint_32 flags;
  /// Writes all of `bitmap`, which has the size of the picture.
  void (*decode)(const Bytes& file, StandInBitmap* bitmap);
};

constexpr PictureFormat kFormats[] = {
    {"PNG", EncodePng, 0, DecodePng},                         // zlib's level 6, all row filters
    {"fast PNG", EncodePng, PNG_IMAGE_FLAG_FAST, DecodePng},  // zlib's level 3, no row filters
    {"WebP", EncodeWebp, 0, DecodeWebp},
};

void DecodeFiles(benchmark::State& state, const PictureFormat& format, const Stream& stream) {
  Player player;
  StandInBitmap bitmap;
  std::vector<Bytes> files;
  double bytes = 0;
  for (const Bytes& message : stream.messages) {
    player.Decode(message);
    const StandInBitmap& picture = player.Bitmap();
    files.push_back(format.encode(picture, format.flags));
    bytes += static_cast<double>(files.back().size());
    bitmap.Resize(picture.GetWidth(), picture.GetHeight(), kBitmapVideoFrame);
    format.decode(files.back(), &bitmap);
    if (!std::ranges::equal(bitmap.Pixels(), picture.Pixels())) {
      return state.SkipWithError("a file decodes to another picture");
    }
  }

  for (auto _ : state) {
    for (const Bytes& file : files) format.decode(file, &bitmap);
  }
  const auto count = static_cast<double>(files.size());
  state.counters["bytes"] = bytes / count;
  state.counters["frames/s"] =
      benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate);
}

}  // namespace

void RegisterPictureFiles(const Stream& stream) {
  for (const PictureFormat& format : kFormats) {
    const std::string name = "Files/" + stream.name + "/" + format.name;
    benchmark::RegisterBenchmark(name.c_str(), DecodeFiles, format, std::cref(stream))
        ->Iterations(kRounds)  // otherwise the library has the files encoded several times
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace zlibvideo::bench
