// Fuzz target: the reader of message files gives back the very bytes of a file and knows its end.

#include <cstdio>

#include "fuzz/Mutation.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  InputFile file(fmemopen(const_cast<std::uint8_t*>(data), size, "rb"));
  MessageFileReader reader(std::move(file), "file");
  Bytes seen;
  FileMessage message;
  auto result = reader.Next(&message);
  for (; result == MessageFileReader::Result::kMessage; result = reader.Next(&message)) {
    seen.push_back(static_cast<unsigned char>(message.length >> 16));
    AppendU16(&seen, message.length);
    Append(&seen, Bytes(message.bytes, message.bytes + message.length));
  }
  Require(seen.size() <= size && std::equal(seen.begin(), seen.end(), data));
  Require((result == MessageFileReader::Result::kEnd) == (seen.size() == size));
  return 0;
}

}  // namespace zlibvideo
