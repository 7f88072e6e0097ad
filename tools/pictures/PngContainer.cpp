#include "tools/pictures/PngContainer.h"

#include <png.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <span>

namespace zlibvideo {
namespace {

/// Opens a zlib stream (RFC 1950): DEFLATE with a window of 32 KiB, compressed fast.
constexpr unsigned char kStreamHead[] = {0x78, 0x5E};
/// An empty last block (RFC 1951). The checksum follows.
constexpr unsigned char kStreamEnd[] = {0x03, 0x00};
constexpr std::size_t kChecksumBytes = 4;

using Parts = std::vector<std::span<const unsigned char>>;

/// Owns libpng's writer, which writes to memory that it was given.
class PngWriter {
 public:
  explicit PngWriter(std::span<unsigned char> room)
      : fPng(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Leave, Ignore)),
        fInfo(fPng == nullptr ? nullptr : png_create_info_struct(fPng)),
        fRoom(room) {
    if (fInfo == nullptr) {
      png_destroy_write_struct(&fPng, nullptr);
      throw std::bad_alloc();
    }
    png_set_write_fn(fPng, this, Append, nullptr);
  }
  ~PngWriter() { png_destroy_write_struct(&fPng, &fInfo); }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;

  /// False without memory or room. libpng may leave it by longjmp: nothing in it may need a
  /// destructor.
  [[nodiscard]] bool Write(const FrameView& size, const Parts& data, std::size_t dataBytes) {
    if (setjmp(png_jmpbuf(fPng)) != 0) return false;
    png_set_IHDR(fPng, fInfo, static_cast<png_uint_32>(size.width),
                 static_cast<png_uint_32>(size.height), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_sRGB(fPng, fInfo, PNG_sRGB_INTENT_PERCEPTUAL);
    png_write_info(fPng, fInfo);
    png_write_chunk_start(fPng, kData, static_cast<png_uint_32>(dataBytes));
    for (std::size_t i = 0; i < data.size(); ++i) {
      png_write_chunk_data(fPng, data[i].data(), data[i].size());
    }
    png_write_chunk_end(fPng);
    png_write_chunk(fPng, kEnd, nullptr, 0);
    return true;
  }
  std::size_t Written() const { return fWritten; }

 private:
  static constexpr png_byte kData[] = "IDAT";
  static constexpr png_byte kEnd[] = "IEND";

  static void Append(png_structp png, png_bytep bytes, std::size_t count) {
    auto* writer = static_cast<PngWriter*>(png_get_io_ptr(png));
    if (count > writer->fRoom.size() - writer->fWritten) png_error(png, "no room");
    std::memcpy(writer->fRoom.data() + writer->fWritten, bytes, count);
    writer->fWritten += count;
  }
  static void Leave(png_structp png, png_const_charp /*text*/) { png_longjmp(png, 1); }
  static void Ignore(png_structp /*png*/, png_const_charp /*text*/) {}

  png_structp fPng;
  png_infop fInfo;
  std::span<unsigned char> fRoom;
  std::size_t fWritten = 0;
};

}  // namespace

void WritePng(const FrameView& size, const std::vector<std::shared_ptr<const PngBand>>& bands,
              std::vector<unsigned char>* png) {
  unsigned char checksum[kChecksumBytes];
  uLong adler = adler32_z(0, nullptr, 0);
  Parts data = {kStreamHead};
  for (const auto& band : bands) {
    data.emplace_back(band->deflated);
    adler = adler32_combine(adler, band->adler, band->length);
  }
  png_save_uint_32(checksum, static_cast<png_uint_32>(adler));
  data.emplace_back(kStreamEnd);
  data.emplace_back(checksum);
  std::size_t dataBytes = 0;
  for (const auto& part : data) dataBytes += part.size();

  constexpr std::size_t kRoomForOtherChunks = 256;
  png->resize(dataBytes + kRoomForOtherChunks);
  PngWriter writer(*png);
  // From a valid picture to room enough, only memory can be short.
  if (!writer.Write(size, data, dataBytes)) throw std::bad_alloc();
  png->resize(writer.Written());
}

}  // namespace zlibvideo
