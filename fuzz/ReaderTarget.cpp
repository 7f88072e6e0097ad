// Fuzz target: the reader of message files gives back the very bytes of a file and knows its end.

#include "fuzz/SaveBytes.h"
#include "tools/files/ToolError.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo {

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MessageFileReader reader(SaveBytes(data, size));
  Bytes seen;
  FileMessage message;
  auto result = MessageFileReader::Result::kEnd;
  try {
    result = reader.Next(&message);
  } catch (const ToolError&) {
    return 0;  // a file of another kind
  }
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
