#include "bitstream/InflateStream.h"

#include <cassert>

namespace zlibvideo {
namespace {

constexpr int kWindowBits = 15;  // 32 KiB of history

// zlib compares these two with its own to refuse a program that was compiled for another layout of
// the stream record: of the version only the first digit, of the record its size. Naming a fixed
// version keeps any later zlib with the same interface usable.
constexpr char kZlibVersion[] = "1.2.8";
constexpr int kStreamRecordSize = static_cast<int>(sizeof(z_stream));
static_assert(sizeof(uLong) != 8 || sizeof(void*) != 8 || kStreamRecordSize == 112,
              "with 64-bit pointers and longs, zlib's interface fixes the record at 112 bytes");

}  // namespace

InflateStream::~InflateStream() {
  static_cast<void>(Close());
}

bool InflateStream::Open(StreamForm form) {
  assert(!fOpen);
  const int windowBits = form == StreamForm::kRawDeflate ? -kWindowBits : kWindowBits;
  fOpen = inflateInit2_(&fStream, windowBits, kZlibVersion, kStreamRecordSize) == Z_OK;
  return fOpen;
}

int InflateStream::Inflate(ByteSpan input, unsigned char* output, unsigned int room, int flush) {
  fStream.next_in = Writable(input.data);
  fStream.avail_in = input.size;
  fStream.next_out = output;
  fStream.avail_out = room;
  return inflate(&fStream, flush);
}

bool InflateStream::Close() {
  if (!fOpen) return true;
  fOpen = false;
  return inflateEnd(&fStream) == Z_OK;
}

}  // namespace zlibvideo
