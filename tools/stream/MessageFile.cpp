#include "tools/stream/MessageFile.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "bitstream/ByteCursor.h"
#include "host/TCMessage.h"
#include "host/standin/StandInMessage.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {

MessageFileReader::MessageFileReader(const std::string& path)
    : MessageFileReader(OpenInput(path), InputName(path)) {}

MessageFileReader::MessageFileReader(InputFile file, std::string name)
    : fFile(std::move(file)), fName(std::move(name)) {}

MessageFileReader::Result MessageFileReader::Next(FileMessage* message) {
  unsigned char lengthField[TCMessage::kLengthBytes];
  const std::uint64_t start = fBytesRead;
  const std::uint32_t fieldBytes = Read(lengthField, sizeof(lengthField));
  std::uint32_t length = 0;
  ByteCursor cursor(lengthField, fieldBytes);
  if (!cursor.ReadU24(&length)) return Stop(start, sizeof(lengthField) - fieldBytes);

  const std::uint64_t offset = fBytesRead;
  const std::uint32_t bytes = ReadMessage(length);
  if (bytes < length) return Stop(start, length - bytes);

  *message = {fBuffer.data(), length, fMessageCount++, offset};
  return Result::kMessage;
}

std::uint32_t MessageFileReader::ReadMessage(std::uint32_t length) {
  // Each step is as long as all before it together, so a length beyond the end of the file costs
  // memory only for the bytes present.
  constexpr std::uint32_t kFirstStep = 0x10000;
  std::uint32_t bytes = 0;
  while (bytes < length) {
    const std::uint32_t step = std::min(length - bytes, std::max(bytes, kFirstStep));
    if (fBuffer.size() < bytes + step) fBuffer.resize(bytes + step);
    const std::uint32_t got = Read(fBuffer.data() + bytes, step);
    bytes += got;
    if (got < step) break;
  }
  return bytes;
}

std::uint32_t MessageFileReader::Read(unsigned char* target, std::uint32_t size) {
  if (size == 0) return 0;
  errno = 0;
  const auto bytes = static_cast<std::uint32_t>(std::fread(target, 1, size, fFile.get()));
  fBytesRead += bytes;
  return bytes;
}

bool MessageFileReader::HasInput() const {
  pollfd input = {fileno(fFile.get()), POLLIN, 0};
  return poll(&input, 1, 0) != 0;
}

MessageFileReader::Result MessageFileReader::Stop(std::uint64_t messageOffset,
                                                  std::uint32_t missing) {
  if (std::ferror(fFile.get()) != 0) {
    fProblem = ToolError::FromSystem(
                   fName, "cannot be read past byte " + std::to_string(fBytesRead), errno)
                   .what();
    return Result::kReadError;
  }
  if (fBytesRead == messageOffset) {
    fProblem = fName + (fMessageCount == 0 ? ": is empty" : ": ends after a whole message");
    return Result::kEnd;
  }
  const bool inLengthField = fBytesRead - messageOffset < TCMessage::kLengthBytes;
  fProblem = fName + ": ends early at byte " + std::to_string(fBytesRead) + ": " +
             Counted(missing, "more byte") + (missing == 1 ? " belongs to " : " belong to ") +
             (inLengthField ? "the length of " : "") + "message " +
             std::to_string(fMessageCount + 1);
  if (fMessageCount == 0) fProblem += "; it may not be a message file";
  return Result::kCutOff;
}

void MessageFileWriter::Write(const unsigned char* bytes, std::size_t length) {
  if (length > StandInMessage::kMaxLength) {
    throw ToolError(fFile.Name() + ": a message of " + std::to_string(length) +
                    " bytes does not fit; a message file takes up to " +
                    std::to_string(StandInMessage::kMaxLength));
  }
  const StandInMessage message(nullptr, static_cast<std::uint32_t>(length));
  fFile.Write(message.fPayloadLength, sizeof(message.fPayloadLength));
  fFile.Write(bytes, length);
  fFile.Flush();
  fWholeBytes += sizeof(message.fPayloadLength) + length;
}

}  // namespace zlibvideo
