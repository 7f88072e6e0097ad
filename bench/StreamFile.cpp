#include "bench/StreamFile.h"

#include <filesystem>

#include "tools/files/ToolError.h"
#include "tools/stream/MessageFile.h"

namespace zlibvideo::bench {

StreamFile StreamFile::Read(const std::string& path) {
  using Result = MessageFileReader::Result;
  StreamFile file;
  file.name = std::filesystem::path(path).stem().string();
  MessageFileReader reader(path);
  FileMessage message;
  Result result = reader.Next(&message);
  for (; result == Result::kMessage; result = reader.Next(&message)) {
    file.messages.emplace_back(message.bytes, message.bytes + message.length);
  }
  if (result != Result::kEnd || file.messages.empty()) throw ToolError(reader.Problem());
  return file;
}

}  // namespace zlibvideo::bench
