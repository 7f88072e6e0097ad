#include "tools/stream/MessageFileWriter.h"

#include "host/standin/StandInMessage.h"
#include "tools/cli/ToolError.h"

namespace zlibvideo {

void MessageFileWriter::Write(const unsigned char* bytes, std::size_t length) {
  if (length > StandInMessage::kMaxLength) {
    throw ToolError(fFile.Name() + ": a message of " + std::to_string(length) +
                    " bytes does not fit; a message file takes up to " +
                    std::to_string(StandInMessage::kMaxLength));
  }
  const StandInMessage message(nullptr, static_cast<std::uint32_t>(length));
  fFile.Write(message.fPayloadLength, sizeof(message.fPayloadLength));
  fFile.Write(bytes, length);
}

}  // namespace zlibvideo
