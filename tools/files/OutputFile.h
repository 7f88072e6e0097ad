#ifndef ZLIBVIDEO_TOOLS_FILES_OUTPUTFILE_H
#define ZLIBVIDEO_TOOLS_FILES_OUTPUTFILE_H

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace zlibvideo {

/// Writes a file. Its bytes go to "NAME.part" until `Commit` renames that to NAME. Without `Commit`
/// the destructor removes NAME.part, and a file NAME that was there before stays. A file that is
/// replaced must be writable, and keeps its mode. Standard output ("-"), devices and pipes are
/// written to directly. Errors throw a `ToolError` that names the file. If the reader of a pipe
/// has closed it, throws `ReaderLeft`. If the reader makes no room after a stop signal, throws
/// `StoppedBySignal`.
class OutputFile {
 public:
  /// Opens the output and creates missing folders.
  explicit OutputFile(const std::string& path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Write(const void* bytes, std::size_t size);
  void Write(const std::string& text) { Write(text.data(), text.size()); }
  /// Writes `line` and a line end. A reader of standard output, a device or a pipe receives it at
  /// once.
  void WriteLine(const std::string& line);
  /// Hands all bytes to the system.
  void Flush();
  /// Hands all bytes to the system and renames the file. REQUIRES: nothing is written afterwards.
  void Commit();
  /// The same with the first `size` bytes alone, after an error, also an error of this file. Bytes
  /// that were written directly remain. REQUIRES: the system has these bytes.
  void CommitFirst(std::uint64_t size);
  /// The path as messages show it.
  const std::string& Name() const { return fName; }

 private:
  /// Opens NAME.part.
  void OpenPart(mode_t mode);
  void CloseAndRename();
  [[noreturn]] void Fail(const char* problem) const;

  std::string fName;
  /// With symbolic links resolved. Empty when the output is written to directly.
  std::string fTarget;
  /// NAME.part while it exists. Else empty.
  std::string fPart;
  int fDescriptor = -1;
  std::string fBuffer;
};

/// From now on, no output can be opened that is the file `input`, or standard input for "-".
void ProtectInput(const std::string& input);

/// Whether `output` is "-" or another name of standard output, such as /dev/stdout.
bool IsStandardOutput(const std::string& output);

/// Whether a command that writes `output` shows its progress on stderr: stderr is a terminal, and
/// `output` is not also standard output to a terminal or a pipe. The program that reads the pipe
/// may show its own progress.
bool HasRoomForProgress(const std::string& output);

/// Throws a `ToolError` when `output` is standard output and a terminal: for binary output.
void RefuseTerminal(const std::string& output);

/// `path` as messages show it: "standard output" if it is that.
std::string OutputName(const std::string& path);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_OUTPUTFILE_H
