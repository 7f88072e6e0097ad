#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H

#include <functional>
#include <memory>
#include <string>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Writes a movie file, whose pictures are of one size. Errors are thrown as `ToolError`.
class MovieWriter {
 public:
  MovieWriter() = default;
  virtual ~MovieWriter() = default;
  MovieWriter(const MovieWriter&) = delete;
  MovieWriter& operator=(const MovieWriter&) = delete;

  /// Adds a picture of the size that the movie was begun with.
  virtual void Add(const FrameView& frame) = 0;
  /// Completes the file and puts it under its name.
  virtual void Finish() = 0;
};

/// Makes a movie of the pictures. A movie has one size: when the stream changes the size, the
/// movie so far is completed and the rest goes to a further file, "movie-2.webp" after
/// "movie.webp". On standard output, a device or a pipe that is an error after a complete movie.
class MovieSink : public FrameSink {
 public:
  /// Begins a movie file for pictures of the size of `first`.
  using OpenWriter =
      std::function<std::unique_ptr<MovieWriter>(const std::string& path, const FrameView& first)>;

  MovieSink(std::string path, OpenWriter open);

  void WritePicture(std::uint64_t index, const FrameView& frame) override;
  void Finish() override;

 private:
  void BeginNextFile(std::uint64_t index, const FrameView& frame);
  std::string FileName() const;

  std::string fPath;
  OpenWriter fOpen;
  int fFileCount = 0;
  FrameView fSize;
  std::unique_ptr<MovieWriter> fWriter;
  /// Whether there is one in the file of `fWriter`.
  bool fHasPicture = false;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_MOVIESINK_H
