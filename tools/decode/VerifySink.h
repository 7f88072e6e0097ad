#ifndef ZLIBVIDEO_TOOLS_DECODE_VERIFYSINK_H
#define ZLIBVIDEO_TOOLS_DECODE_VERIFYSINK_H

#include <optional>
#include <string>

#include "tools/cli/InputFile.h"
#include "tools/decode/FrameSink.h"

namespace zlibvideo {

/// Compares every message's `HashLine` with the next line of a file. At the first difference it
/// throws a `ToolError`, with `kExitMismatch` unless the file is not a list of such lines at all.
class VerifySink : public FrameSink {
 public:
  /// Opens the file, or standard input for "-".
  explicit VerifySink(const std::string& path);

  void WritePicture(std::uint64_t index, const FrameView& frame) override;
  void NoteFailure(std::uint64_t index, const FrameView& frame) override;
  /// The file must have ended, too.
  void Finish() override;

 private:
  void Compare(std::uint64_t index, const std::string& line);
  /// The next line without its end; nothing at the end of the file.
  std::optional<std::string> ReadLine();

  std::string fName;
  InputFile fFile;
  std::uint64_t fLineCount = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_VERIFYSINK_H
