#include "tools/pictures/PngBand.h"

#include <algorithm>
#include <cstddef>
#include <new>

namespace zlibvideo {
namespace {

/// Higher ones take longer by more than they save.
constexpr int kLevel = 3;
constexpr int kMemoryLevel = 7;
/// PNG's filter type of a row as it is: pictures of a desktop come out smaller so.
constexpr unsigned char kNoFilter = 0;

std::size_t RawRowBytes(int width) {
  return 1 + static_cast<std::size_t>(width) * Picture::kPixelBytes;
}

/// Fills `raw` with the rows as PNG has them: the filter type, then red, green and blue.
void ToRaw(const FrameView& rows, std::vector<unsigned char>* raw) {
  raw->resize(RawRowBytes(rows.width) * static_cast<std::size_t>(rows.height));
  const unsigned char* in = rows.pixels;
  unsigned char* out = raw->data();
  for (int row = 0; row < rows.height; ++row) {
    *out++ = kNoFilter;
    for (int column = 0; column < rows.width; ++column) {
      out[0] = in[2];
      out[1] = in[1];
      out[2] = in[0];
      in += FrameView::kPixelBytes;
      out += Picture::kPixelBytes;
    }
  }
}

/// Compresses all the input that `stream` has been given and ends at a whole byte.
std::vector<unsigned char> Flush(z_stream* stream) {
  constexpr std::size_t kFirstRoom = 0x4000;
  std::vector<unsigned char> output;
  do {
    const std::size_t written = output.size();
    output.resize(std::max(kFirstRoom, 2 * written));
    stream->next_out = output.data() + written;
    stream->avail_out = static_cast<uInt>(output.size() - written);
    deflate(stream, Z_SYNC_FLUSH);
  } while (stream->avail_out == 0);
  output.resize(stream->total_out);
  output.shrink_to_fit();
  return output;
}

}  // namespace

PngBandDeflater::PngBandDeflater() {
  if (deflateInit2(&fStream, kLevel, Z_DEFLATED, -MAX_WBITS, kMemoryLevel, Z_DEFAULT_STRATEGY) !=
      Z_OK) {
    throw std::bad_alloc();
  }
}

PngBandDeflater::~PngBandDeflater() {
  deflateEnd(&fStream);
}

PngBand PngBandDeflater::Compress(const PixelRows& rows) {
  ToRaw(rows.View(), &fRaw);
  const std::size_t rowAbove = rows.hasRowAbove ? RawRowBytes(rows.width) : 0;
  deflateReset(&fStream);
  if (rowAbove > 0) deflateSetDictionary(&fStream, fRaw.data(), static_cast<uInt>(rowAbove));
  fStream.next_in = fRaw.data() + rowAbove;
  fStream.avail_in = static_cast<uInt>(fRaw.size() - rowAbove);

  PngBand band;
  band.length = static_cast<z_off_t>(fStream.avail_in);
  band.adler = adler32_z(adler32_z(0, nullptr, 0), fStream.next_in, fStream.avail_in);
  band.deflated = Flush(&fStream);
  return band;
}

}  // namespace zlibvideo
