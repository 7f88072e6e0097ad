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

/// One message of a message file. The bytes belong to the reader and are valid until its next call;
/// they may be written to.
struct FileMessage {
  unsigned char* bytes = nullptr;
  /// Bytes; 0 is a message like any other.
  std::uint32_t length = 0;
  /// From 0, as in data for programs.
  std::uint64_t index = 0;
  /// Where in the file, in bytes, the message begins after its length.
  std::uint64_t offset = 0;

  /// From 1, as people are told of messages, in sentences as in names of files.
  std::uint64_t Number() const { return index + 1; }
};

/// Reads a message file front to back: for each message its length, 24-bit unsigned, most
/// significant byte first, then the message. Holds one message at a time, so that memory stays
/// below 16 MiB whatever the length of the file.
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
  explicit MessageFileReader(const std::string& path);
  /// Reads from an open stream; `name` is for messages.
  MessageFileReader(InputFile file, std::string name);

  /// Reads the next message; `message` is set for `kMessage` alone. After any other result there
  /// are no more messages and `Problem` says what happened.
  Result Next(FileMessage* message);

  /// Whether there is more to read, or the end of the file, without waiting for whoever sends it.
  /// Of what comes through a pipe, it may overlook the last few kilobytes.
  bool HasInput() const;

  /// The last result in words, with the name of the file: where it is cut off, the system's error.
  const std::string& Problem() const { return fProblem; }
  const std::string& Name() const { return fName; }
  std::uint64_t BytesRead() const { return fBytesRead; }
  /// Messages read so far.
  std::uint64_t MessageCount() const { return fMessageCount; }
  /// Bytes, when the file is a regular one.
  std::optional<std::uint64_t> FileSize() const { return InputSize(fFile.get()); }

 private:
  /// Reads up to `length` bytes to the start of the buffer; returns how many there were.
  std::uint32_t ReadMessage(std::uint32_t length);
  std::uint32_t Read(unsigned char* target, std::uint32_t size);
  Result Stop(std::uint64_t messageOffset, std::uint32_t missing);

  InputFile fFile;
  std::string fName;
  std::vector<unsigned char> fBuffer;
  std::uint64_t fBytesRead = 0;
  std::uint64_t fMessageCount = 0;
  std::string fProblem;
};

/// Writes a message file, as `MessageFileReader` reads it.
class MessageFileWriter {
 public:
  /// Writes to `path`, or standard output for "-", as `OutputFile` does.
  explicit MessageFileWriter(const std::string& path) : fFile(path) {}

  /// Appends one message and hands it to the system. Throws `ToolError` when it cannot be written,
  /// or is longer than 24 bits can express.
  void Write(const unsigned char* bytes, std::size_t length);
  /// Puts the file under its name; without it nothing is left.
  void Commit() { fFile.Commit(); }
  /// The same after an error, also one of writing: all messages that were written wholly.
  void CommitWhole() { fFile.CommitFirst(fWholeBytes); }

 private:
  OutputFile fFile;
  std::uint64_t fWholeBytes = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_STREAM_MESSAGEFILE_H
