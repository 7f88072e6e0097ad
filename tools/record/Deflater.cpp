#include "tools/record/Deflater.h"

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

}  // namespace

Deflater::Deflater(StreamForm form, int level) : fLevel(level) {
  if (deflateInit2(&fStream, level, Z_DEFLATED, WindowBits(form), kMemoryLevel,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
}

Deflater::~Deflater() {
  deflateEnd(&fStream);
}

std::vector<unsigned char> Deflater::Compress(ByteSpan data, ByteSpan dictionary) {
  const bool good = Begin(dictionary);
  std::vector<unsigned char> payload(deflateBound(&fStream, data.size) + kBoundSlack);
  fStream.next_in = Writable(data.data);
  fStream.avail_in = data.size;
  fStream.next_out = payload.data();
  fStream.avail_out = static_cast<uInt>(payload.size());
  if (!good || deflate(&fStream, Z_FINISH) != Z_STREAM_END) throw RecordError("zlib failed");
  payload.resize(fStream.total_out);
  return payload;
}

bool Deflater::Begin(ByteSpan dictionary) {
  if (deflateReset(&fStream) != Z_OK) return false;
  // A reset brings back the level's own search.
  const auto& [goodLength, maxLazy, niceLength, maxChain] = kTunedSearch;
  if (fLevel == kTunedLevel &&
      deflateTune(&fStream, goodLength, maxLazy, niceLength, maxChain) != Z_OK) {
    return false;
  }
  return dictionary.size == 0 ||
         deflateSetDictionary(&fStream, dictionary.data, dictionary.size) == Z_OK;
}

}  // namespace zlibvideo
