#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNGPICTURES_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNGPICTURES_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/files/InputFile.h"
#include "tools/parallel/Parallel.h"
#include "tools/pictures/PictureSource.h"
#include "tools/pictures/PictureStream.h"

namespace zlibvideo {

/// A list of PNG files. Each "-" in the list is a picture from standard input. Other threads read
/// files ahead.
class PngFiles : public PictureSource {
 public:
  /// `jobs` is the number of threads. REQUIRES: at least a path and a job.
  PngFiles(std::vector<std::string> paths, unsigned int jobs);

  bool Next(Picture* picture) override;
  std::string Name() const override;
  std::optional<std::uint64_t> Count() const override { return fPaths.size(); }
  bool IsStream() const override { return false; }

 private:
  /// Begins to read the next files, up to the next "-".
  void ReadAhead();
  Picture ReadStandardInput();

  std::vector<std::string> fPaths;
  std::size_t fBegun = 0;
  std::size_t fRead = 0;
  std::optional<InputFile> fStandardInput;
  /// The files before `fBegun`. Declared last: its threads use `fPaths`.
  OrderedWork<Picture> fAhead;
};

/// PNG files that follow each other in an input.
class PngStream : public PictureStream {
 public:
  explicit PngStream(std::unique_ptr<InputFile> input) : PictureStream(std::move(input)) {}

 private:
  bool ReadPicture(Picture* picture) override;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNGPICTURES_H
