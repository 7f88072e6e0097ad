#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H

#include <functional>
#include <memory>
#include <string>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Writes a movie file, whose pictures have one size. Errors throw `ToolError`.
class MovieWriter {
 public:
  MovieWriter() = default;
  virtual ~MovieWriter() = default;
  MovieWriter(const MovieWriter&) = delete;
  MovieWriter& operator=(const MovieWriter&) = delete;

  /// Adds a picture of the size that the movie began with.
  virtual void Add(const FrameView& frame) = 0;
  /// Completes the file and gives it its name.
  virtual void Finish() = 0;
};

/// Makes a movie of the pictures. The file appears with the first picture. If the size of the
/// pictures changes, the sink completes the movie before the change and throws `ToolError` with
/// `kExitDamagedInput`.
class MovieSink : public FrameSink {
 public:
  /// Begins a movie file for pictures of the size of `first`.
  using OpenWriter =
      std::function<std::unique_ptr<MovieWriter>(const std::string& path, const FrameView& first)>;

  MovieSink(std::string path, OpenWriter open);

  void WritePicture(std::uint64_t index, const FrameView& frame) override;
  void Finish() override;

 private:
  std::string fPath;
  OpenWriter fOpen;
  FrameView fSize;
  std::unique_ptr<MovieWriter> fWriter;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H
