#ifndef ZLIBVIDEO_TOOLS_STREAM_MESSAGEFILE_H
#define ZLIBVIDEO_TOOLS_STREAM_MESSAGEFILE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"

namespace zlibvideo {

/// Bytes of the length before each message of a message file.
inline constexpr std::size_t kMessageLengthBytes = 3;

/// A message of a message file. The bytes belong to the reader and are valid until its next call.
/// They may be written to.
struct FileMessage {
  unsigned char* bytes = nullptr;
  /// Bytes. 0 is a message like any other.
  std::uint32_t length = 0;
  /// From 0, as in data for programs.
  std::uint64_t index = 0;
  /// Where in the file, in bytes, the message begins after its length.
  std::uint64_t offset = kMessageLengthBytes;

  /// From 1, for sentences and names of files.
  std::uint64_t Number() const { return index + 1; }
};

/// Reads a message file front to back: for each message its length, 24-bit unsigned, most
/// significant byte first, then the message. Holds a single message, of less than 16 MiB.
class MessageFileReader {
 public:
  enum class Result {
    kMessage,
    /// The file ends after a whole message, or is empty.
    kEnd,
    /// The file ends within a message or its length.
    kCutOff,
    kReadError,
  };

  /// Reads from `path`, or standard input for "-". Throws `ToolError` when it cannot be opened.
  explicit MessageFileReader(const std::string& path) : fInput(path) {}

  /// Reads the next message. Sets `message` for `kMessage` alone. After any other result there
  /// are no more messages, and `Problem` explains the result. Throws `ToolError` when the file is
  /// of a known other kind, and `StoppedBySignal` after a signal.
  Result Next(FileMessage* message);

  /// Goes back to `message`, of a regular file: `Next` reads it again.
  void GoTo(const FileMessage& message);

  /// Whether `Next` can begin to read without waiting for the sender: bytes are there, or the end.
  bool HasInput() const { return fInput.IsReady(); }

  /// The last result in words, with the name of the file: where it is cut off, the system's error.
  const std::string& Problem() const { return fProblem; }
  const std::string& Name() const { return fInput.Name(); }
  std::uint64_t BytesRead() const { return fBytesRead; }
  /// Messages read so far.
  std::uint64_t MessageCount() const { return fMessageCount; }
  /// Bytes of a regular file. Nothing for a pipe or a device.
  std::optional<std::uint64_t> FileSize() const { return fInput.Size(); }

 private:
  void RefuseOtherKinds();
  /// Explains why only `read` bytes of a message and its length, `size` in all, were there.
  Result Stop(std::size_t read, std::size_t size);

  InputFile fInput;
  std::vector<unsigned char> fBuffer;
  std::uint64_t fBytesRead = 0;
  std::uint64_t fMessageCount = 0;
  /// Empty messages since the last message with bytes.
  std::uint64_t fEmptyMessages = 0;
  std::string fProblem;
};

/// Writes a message file, as `MessageFileReader` reads it.
class MessageFileWriter {
 public:
  /// Bytes of a message: 24 bits hold its length.
  static constexpr std::size_t kMaxLength = 0xFFFFFF;

  /// Writes to `path`, or standard output for "-", as `OutputFile` does.
  explicit MessageFileWriter(const std::string& path) : fFile(path) {}

  /// Appends a message and hands it to the system. Throws `ToolError` if it cannot be written.
  /// REQUIRES: at most `kMaxLength` bytes.
  void Write(const unsigned char* bytes, std::size_t length);
  /// Gives the file its name. Without this call, nothing is left.
  void Commit() { fFile.Commit(); }
  /// The same after an error, also an error of writing, with the messages that are whole.
  void CommitWhole() { fFile.CommitFirst(fWholeBytes); }

  const std::string& Name() const { return fFile.Name(); }
  /// Bytes of all messages and their lengths.
  std::uint64_t WholeBytes() const { return fWholeBytes; }

 private:
  OutputFile fFile;
  std::uint64_t fWholeBytes = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_MESSAGEFILE_H
