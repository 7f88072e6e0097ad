#ifndef ZLIBVIDEO_TOOLS_PICTURES_PNGFILES_H
#define ZLIBVIDEO_TOOLS_PICTURES_PNGFILES_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tools/cli/ByteInput.h"
#include "tools/pictures/PictureSource.h"

namespace zlibvideo {

/// A list of PNG files. Each "-" among them is one picture from standard input.
class PngFiles : public PictureSource {
 public:
  /// REQUIRES: at least one.
  explicit PngFiles(std::vector<std::string> paths);

  bool Next(Picture* picture) override;
  std::string Name() const override;
  std::optional<std::uint64_t> Count() const override { return fPaths.size(); }
  bool IsStream() const override { return false; }

 private:
  std::vector<std::string> fPaths;
  std::size_t fRead = 0;
  std::optional<ByteInput> fStandardInput;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_PICTURES_PNGFILES_H
