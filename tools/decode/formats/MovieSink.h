#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H

#include <optional>
#include <string>
#include <utility>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/files/OutputFile.h"

namespace zlibvideo {

/// Writes all pictures to one file, which appears with the first picture. Derived classes define
/// the format. If the size of the pictures changes, `WritePicture` completes the file before the
/// change and throws `ToolError` with `kExitDamagedInput`.
class MovieSink : public FrameSink {
 public:
  explicit MovieSink(std::string path) : fPath(std::move(path)) {}

  void WritePicture(std::uint64_t index, const FrameView& frame) final;
  void Finish() final;

 protected:
  OutputFile& File() { return *fFile; }

 private:
  /// Begins the file for pictures of the size of `first`.
  virtual void Begin(const FrameView& /*first*/) {}
  virtual void Add(const FrameView& frame) = 0;
  /// Ends the file after the last picture.
  virtual void End() {}

  std::string fPath;
  std::optional<OutputFile> fFile;
  /// Of the pictures in the file. 0 x 0 before the first picture.
  FrameView fSize;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H
