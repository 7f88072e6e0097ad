#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNGFILES_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNGFILES_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tools/files/InputFile.h"
#include "tools/parallel/OrderedWork.h"
#include "tools/pictures/PictureSource.h"

namespace zlibvideo {

/// A list of PNG files. Each "-" among them is one picture from standard input. Files are read
/// ahead on other threads.
class PngFiles : public PictureSource {
 public:
  /// Reads up to `jobs` files at once, `kMaxPicturesAtOnce` at the most. REQUIRES: at least one
  /// file and one job.
  PngFiles(std::vector<std::string> paths, unsigned int jobs);

  bool Next(Picture* picture) override;
  std::string Name() const override;
  std::optional<std::uint64_t> Count() const override { return fPaths.size(); }
  bool IsStream() const override { return false; }

 private:
  /// Begins to read the next files, up to one that has to wait for its turn.
  void ReadAhead();
  Picture ReadStandardInput();

  std::vector<std::string> fPaths;
  std::size_t fBegun = 0;
  std::size_t fRead = 0;
  std::optional<InputFile> fStandardInput;
  /// Of files up to `fBegun`. Declared last: what is being read is named in `fPaths`.
  OrderedWork<Picture> fAhead;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNGFILES_H
