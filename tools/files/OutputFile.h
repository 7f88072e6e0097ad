#ifndef ZLIBVIDEO_TOOLS_FILES_OUTPUTFILE_H
#define ZLIBVIDEO_TOOLS_FILES_OUTPUTFILE_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "tools/files/TemporaryFile.h"

namespace zlibvideo {

/// A file being written. It lies beside its final name under a temporary one until `Commit` renames
/// it; if that does not happen, by an error or a signal, it is removed and what had the final name
/// before is still there. A file that is replaced must be writable, and its mode is kept. Standard
/// output ("-"), devices and pipes are written to directly. Every error is thrown as a `ToolError`
/// that names the file, except that a closed standard output ends the command silently.
class OutputFile {
 public:
  /// Opens the output; missing folders are created.
  explicit OutputFile(const std::string& path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void Write(const void* bytes, std::size_t size);
  void Write(const std::string& text) { Write(text.data(), text.size()); }
  /// Writes `line` and its end. Unless it goes to a temporary file, whoever reads the output has it
  /// at once, and a signal does not lose it.
  void WriteLine(const std::string& line);
  /// Hands everything to the system: whoever reads the output, or the temporary file, has it.
  void Flush();
  /// Ends the output: everything has been handed to the system and the file has its final name.
  /// Nothing may be written afterwards.
  void Commit();
  /// The same with no more than the first `size` bytes: for what is whole after an error, also of
  /// this file. What was written directly remains. A file that cannot have its final name stays
  /// under its temporary one, which the error gives.
  void CommitFirst(std::uint64_t size);
  /// The path as messages show it.
  const std::string& Name() const { return fName; }

 private:
  [[noreturn]] void Fail(const char* what) const;

  std::string fName;
  /// Final path; symbolic links are followed. Empty for standard output.
  std::string fTarget;
  /// Absent when the output is written to directly.
  std::optional<TemporaryFile> fTemporary;
  std::FILE* fStream = nullptr;
};

/// Keeps `input`, or standard input for "-", from being replaced by what is made of it: from now on
/// an output that is the same regular file, under whatever name, cannot be opened.
void ProtectInput(const std::string& input);

/// Whether `output` is "-" or another name of what standard output is, such as /dev/stdout: it is
/// written to as it was opened, and not replaced.
bool IsStandardOutput(const std::string& output);

/// Whether `output` is standard output, or a device or pipe: there is one of it, without a name of
/// which others could be made.
bool IsWrittenDirectly(const std::string& output);

/// Whether `output` is a terminal.
bool IsTerminal(const std::string& output);

/// Throws a `ToolError` when `output` is a terminal: for binary output.
void RefuseTerminal(const std::string& output);

/// `path` as messages show it: "standard output" if it is that.
std::string OutputName(const std::string& path);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_OUTPUTFILE_H
