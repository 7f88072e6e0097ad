#include "tools/stream/MessageFile.h"

#include <algorithm>
#include <cerrno>

#include "bitstream/ByteCursor.h"
#include "tools/files/StopSignal.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

struct OtherKind {
  std::string_view signature;
  const char* explanation;
};

/// As lengths of a first message, these would all be above 5 MB.
constexpr OtherKind kOtherKinds[] = {
    {"\x89PNG", "is a PNG file, not a message file; \"zlibvideo record\" makes a stream of it"},
    {"YUV4MPEG2", "is y4m, not a message file; \"zlibvideo record\" makes a stream of it"},
    {"RIFF", "is WebP, not a message file; open it with a web browser"},
};

}  // namespace

MessageFileReader::Result MessageFileReader::Next(FileMessage* message) {
  if (StopSignal() != 0) throw StoppedBySignal();
  if (fMessageCount == 0) RefuseOtherKinds();
  unsigned char lengthField[kMessageLengthBytes];
  const std::size_t fieldBytes = fInput.Read(lengthField, kMessageLengthBytes);
  std::uint32_t length = 0;
  ByteCursor cursor(lengthField, static_cast<unsigned int>(fieldBytes));
  fBytesRead += fieldBytes;
  if (!cursor.ReadU24(&length)) {
    // Zeros behind a stream, as after a power cut, are empty messages and perhaps a part of a
    // length.
    const bool isZero = std::all_of(lengthField, lengthField + fieldBytes,
                                    [](unsigned char byte) { return byte == 0; });
    return Stop(isZero && fEmptyMessages > 1 ? 0 : fieldBytes, kMessageLengthBytes);
  }
  fEmptyMessages = length == 0 ? fEmptyMessages + 1 : 0;

  const std::uint64_t offset = fBytesRead;
  const std::size_t bytes = fInput.Read(length, &fBuffer);
  fBytesRead += bytes;
  if (bytes < length) return Stop(kMessageLengthBytes + bytes, kMessageLengthBytes + length);

  *message = {fBuffer.data(), length, fMessageCount++, offset};
  return Result::kMessage;
}

void MessageFileReader::GoTo(const FileMessage& message) {
  fBytesRead = message.offset - kMessageLengthBytes;
  fMessageCount = message.index;
  fInput.GoTo(fBytesRead);
}

void MessageFileReader::RefuseOtherKinds() {
  for (const OtherKind& kind : kOtherKinds) {
    if (fInput.StartsWith(kind.signature)) throw ToolError(Name() + ": " + kind.explanation);
  }
}

MessageFileReader::Result MessageFileReader::Stop(std::size_t read, std::size_t size) {
  try {
    fInput.CheckError();
  } catch (const ToolError& error) {
    fProblem = error.what();
    fProblem += " (after byte " + std::to_string(fBytesRead) + ")";
    return Result::kReadError;
  }
  if (read == 0) {
    fProblem = Name() + (fMessageCount == 0 ? ": is empty" : ": ends after a whole message");
    return Result::kEnd;
  }
  fProblem = Name() + ": ends early at byte " + std::to_string(fBytesRead) + ": " +
             Counted(size - read, "more byte") +
             (size - read == 1 ? " belongs to " : " belong to ") +
             (read < kMessageLengthBytes ? "the length of " : "") + "message " +
             std::to_string(fMessageCount + 1);
  if (fMessageCount == 0) fProblem += "; it may not be a message file";
  return Result::kCutOff;
}

void MessageFileWriter::Write(const unsigned char* bytes, std::size_t length) {
  const unsigned char lengthField[kMessageLengthBytes] = {static_cast<unsigned char>(length >> 16),
                                                          static_cast<unsigned char>(length >> 8),
                                                          static_cast<unsigned char>(length)};
  fFile.Write(lengthField, kMessageLengthBytes);
  fFile.Write(bytes, length);
  fFile.Flush();
  fWholeBytes += kMessageLengthBytes + length;
}

}  // namespace zlibvideo
