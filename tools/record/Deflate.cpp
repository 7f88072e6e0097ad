#include "tools/record/Deflate.h"

#include <zlib.h>

#include <memory>
#include <new>

#include "tools/record/RecordError.h"

namespace zlibvideo {
namespace {

constexpr int kMemoryLevel = 9;

// zlib's bound can be a byte short for the smallest inputs at level 0 (1.2.13 with this memory
// level).
constexpr uLong kBoundSlack = 8;

/// How zlib searches at a level, in the order of `deflateTune`.
struct Search {
  int goodLength;
  int maxLazy;
  int niceLength;
  int maxChain;
};
constexpr int kTunedLevel = 8;
constexpr Search kTunedSearch = {32, 258, 258, 640};

int WindowBits(StreamForm form) {
  return form == StreamForm::kRawDeflate ? -MAX_WBITS : MAX_WBITS;
}

bool Tune(z_stream* stream) {
  const auto& [goodLength, maxLazy, niceLength, maxChain] = kTunedSearch;
  return deflateTune(stream, goodLength, maxLazy, niceLength, maxChain) == Z_OK;
}

}  // namespace

std::vector<unsigned char> Deflate(StreamForm form, int level, ByteSpan data, ByteSpan dictionary) {
  // A new state for each stream: after deflateReset, zlib-ng still hashes bytes of the stream
  // before, and writes other bytes.
  z_stream stream = {};
  if (deflateInit2(&stream, level, Z_DEFLATED, WindowBits(form), kMemoryLevel,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
  const std::unique_ptr<z_stream, int (*)(z_stream*)> owner(&stream, deflateEnd);
  bool good = level != kTunedLevel || Tune(&stream);
  if (dictionary.size > 0) {
    good = good && deflateSetDictionary(&stream, dictionary.data, dictionary.size) == Z_OK;
  }
  std::vector<unsigned char> payload(deflateBound(&stream, data.size) + kBoundSlack);
  stream.next_in = Writable(data.data);
  stream.avail_in = data.size;
  stream.next_out = payload.data();
  stream.avail_out = static_cast<uInt>(payload.size());
  if (!good || deflate(&stream, Z_FINISH) != Z_STREAM_END) throw RecordError("zlib failed");
  payload.resize(stream.total_out);
  return payload;
}

}  // namespace zlibvideo
