#include "tools/record/OpenPictures.h"

#include <filesystem>
#include <utility>

#include "tools/files/ByteInput.h"
#include "tools/files/ToolError.h"
#include "tools/pictures/Png.h"
#include "tools/pictures/PngFiles.h"
#include "tools/pictures/PngStream.h"
#include "tools/pictures/RawPictures.h"
#include "tools/pictures/Y4mHeader.h"
#include "tools/pictures/Y4mPictures.h"

namespace zlibvideo {

bool PictureInputs::AreNamedAsPng() const {
  return AreList() || std::filesystem::path(paths.front()).extension() == ".png";
}

std::unique_ptr<PictureSource> OpenPictures(const PictureInputs& inputs, unsigned int jobs) {
  if (inputs.AreList()) return std::make_unique<PngFiles>(inputs.paths, jobs);

  ByteInput input(inputs.paths.front());
  // Whoever stops the reading of a file can begin again; what a pipe brought is gone.
  if (!input.IsRegularFile()) input.EndAtSignals();
  if (inputs.AreRaw()) {
    return std::make_unique<RawPictures>(std::move(input), inputs.rawWidth, inputs.rawHeight);
  }
  if (input.StartsWith(Y4mHeader::kSignature)) {
    return std::make_unique<Y4mPictures>(std::move(input));
  }
  // A stream without a byte has no pictures of any kind.
  if (input.StartsWith(kPngSignature) || !input.HasMore()) {
    return std::make_unique<PngStream>(std::move(input));
  }
  if (input.EndedBy() != nullptr) input.EndedBy()->Obey();
  input.CheckError();
  throw ToolError(input.Name() +
                  ": is neither PNG nor y4m; if it is raw pictures, give --size WIDTHxHEIGHT");
}

}  // namespace zlibvideo
