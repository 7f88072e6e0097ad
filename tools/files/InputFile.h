#ifndef ZLIBVIDEO_TOOLS_FILES_INPUTFILE_H
#define ZLIBVIDEO_TOOLS_FILES_INPUTFILE_H

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zlibvideo {

/// The file name that stands for standard input or standard output.
inline constexpr const char* kStandardStreamName = "-";

/// `path` as messages show it: "standard input" for "-".
std::string InputName(const std::string& path);

/// Reads a file or pipe through a buffer, and waits for no more bytes than a call needs. The input
/// ends at its end, at an error of the system or at a stop signal. For use by a single thread.
class InputFile {
 public:
  /// Opens `path`, or standard input for "-". Throws `ToolError` when it cannot be opened or is a
  /// directory.
  explicit InputFile(const std::string& path);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// As messages show it.
  const std::string& Name() const { return fName; }
  /// Bytes of a regular file. Nothing for a pipe or a device.
  std::optional<std::uint64_t> Size() const;

  /// Goes on reading a regular file at `offset`, in bytes from where the first read began.
  void GoTo(std::uint64_t offset);

  /// From now on a stop signal is an ordinary end of the input, not an error.
  void EndAtStopSignal() { fSignalIsEnd = true; }
  bool EndsAtStopSignal() const { return fSignalIsEnd; }
  bool EndedBySignal() const { return fStopped; }
  /// Throws `ToolError` when the system could not read, and `StoppedBySignal` when a signal ended
  /// the input and is an error.
  void CheckError() const;

  /// Whether another byte follows. Waits for it.
  bool HasMore() { return Peek(1) > 0; }
  /// Whether the next read returns without waiting: bytes are there, or the end.
  bool IsReady() const;
  /// Whether the next bytes are `text`, of at most 64 KiB. The bytes remain to be read. Waits for
  /// no byte after the first difference.
  bool StartsWith(std::string_view text);
  /// Reads `size` bytes, or fewer when the input ends. Returns their number.
  std::size_t Read(unsigned char* target, std::size_t size);
  /// The same in place of the contents of `bytes`. Memory grows with the bytes that come, not with
  /// `size`: to twice as much at most.
  std::size_t Read(std::size_t size, std::vector<unsigned char>* bytes);
  /// Reads a line through its end, which is not part of `line`. Returns false when the input ends,
  /// or `limit` bytes are read, before the end of the line: `line` holds these bytes.
  bool ReadLine(std::size_t limit, std::string* line);

 private:
  static constexpr std::size_t kBufferBytes = 0x10000;

  struct Descriptor {
    ~Descriptor();
    int number = -1;
  };

  /// Waits until the buffer holds `size` bytes, at most `kBufferBytes`, or the input ends. Returns
  /// the number of bytes in it.
  std::size_t Peek(std::size_t size);
  /// Waits for bytes and reads up to `size`. Returns their number, 0 when the input ends.
  std::size_t ReadSome(unsigned char* target, std::size_t size);

  Descriptor fDescriptor;
  std::string fName;
  /// Where reading of a regular file began: another program may have read standard input before.
  off_t fStart = 0;
  bool fSignalIsEnd = false;
  bool fStopped = false;
  bool fEnded = false;
  /// The system's error number. 0 without an error.
  int fError = 0;
  std::vector<unsigned char> fBuffer;
  /// The unread part of the buffer.
  std::size_t fBegin = 0;
  std::size_t fEnd = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_INPUTFILE_H
