#include "tools/stream/ZlibTrial.h"

#include <zlib.h>

#include <new>
#include <string_view>
#include <vector>

namespace zlibvideo {
namespace {

/// zlib's stream for as long as it is in scope. The component's own wrapper hides zlib's error
/// messages; here they are what is wanted.
class Inflater {
 public:
  Inflater() {
    if (inflateInit(&fStream) != Z_OK) throw std::bad_alloc();
  }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  ~Inflater() { static_cast<void>(inflateEnd(&fStream)); }

  int Run(ByteSpan source, std::vector<unsigned char>* output) {
    fStream.next_in = Writable(source.data);
    fStream.avail_in = source.size;
    fStream.next_out = output->data();
    fStream.avail_out = static_cast<unsigned int>(output->size());
    return inflate(&fStream, Z_FINISH);
  }

  const z_stream& Stream() const { return fStream; }

 private:
  z_stream fStream = {};
};

std::string DescribeDataError(const z_stream& stream) {
  constexpr uLong kZlibHeaderSize = 2;
  const std::string_view words = stream.msg == nullptr ? "invalid data" : stream.msg;
  const std::string remark = " (" + std::string(words) + ")";
  if (stream.total_in <= kZlibHeaderSize) return "is not a zlib stream" + remark;
  if (words == "incorrect data check") return "decompresses, but its check value does not match";
  return "is damaged after " + std::to_string(stream.total_out) + " bytes of output" + remark;
}

std::string Describe(int result, const z_stream& stream, unsigned int room) {
  if (stream.total_out > room) {
    return "decompresses to more than the " + std::to_string(room) +
           " bytes that there is room for";
  }
  switch (result) {
    case Z_STREAM_END:
      return {};
    case Z_NEED_DICT:
      return "asks for a preset dictionary";
    case Z_DATA_ERROR:
      return DescribeDataError(stream);
    default:
      return "is cut off: its " + std::to_string(stream.total_in) + " bytes give " +
             std::to_string(stream.total_out) + " bytes of output and no end";
  }
}

}  // namespace

ZlibTrial ZlibTrial::Run(ByteSpan source, unsigned int room) {
  // One byte more than the room tells a stream that is too large from one that is cut off there.
  std::vector<unsigned char> output(std::size_t{room} + 1);
  Inflater inflater;
  const int result = inflater.Run(source, &output);
  return {Describe(result, inflater.Stream(), room),
          static_cast<unsigned int>(inflater.Stream().total_out)};
}

}  // namespace zlibvideo
