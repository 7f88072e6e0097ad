#include "tools/record/Deflater.h"

#include <new>

#include "tools/record/RecordError.h"

namespace zlibvideo {
namespace {

constexpr int kMemoryLevel = 9;

// zlib's bound can be a byte short for the smallest inputs at level 0 (1.2.13 with this memory
// level).
constexpr uLong kBoundSlack = 8;

int WindowBits(StreamForm form) {
  return form == StreamForm::kRawDeflate ? -MAX_WBITS : MAX_WBITS;
}

}  // namespace

Deflater::Deflater(StreamForm form, int level) {
  if (deflateInit2(&fStream, level, Z_DEFLATED, WindowBits(form), kMemoryLevel,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
}

Deflater::~Deflater() {
  deflateEnd(&fStream);
}

std::vector<unsigned char> Deflater::Compress(ByteSpan data, ByteSpan dictionary) {
  bool good = deflateReset(&fStream) == Z_OK;
  if (dictionary.size != 0) {
    good = good && deflateSetDictionary(&fStream, dictionary.data, dictionary.size) == Z_OK;
  }
  std::vector<unsigned char> payload(deflateBound(&fStream, data.size) + kBoundSlack);
  fStream.next_in = Writable(data.data);
  fStream.avail_in = data.size;
  fStream.next_out = payload.data();
  fStream.avail_out = static_cast<uInt>(payload.size());
  if (!good || deflate(&fStream, Z_FINISH) != Z_STREAM_END) throw RecordError("zlib failed");
  payload.resize(fStream.total_out);
  return payload;
}

}  // namespace zlibvideo
