#include "tools/record/OpenPictures.h"

#include <filesystem>
#include <utility>

#include "tools/files/InputFile.h"
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

  auto input = std::make_unique<InputFile>(inputs.paths.front());
  // A file can be read again; the pictures of a pipe are gone.
  if (!input->Size()) input->EndAtStopSignal();
  if (inputs.AreRaw()) {
    return std::make_unique<RawPictures>(std::move(input), inputs.rawWidth, inputs.rawHeight);
  }
  if (input->StartsWith(Y4mHeader::kSignature)) {
    return std::make_unique<Y4mPictures>(std::move(input));
  }
  // `PngStream` also reports an input without a byte, and a signal before the first picture.
  if (input->StartsWith(kPngSignature) || !input->HasMore() || input->EndedBySignal()) {
    return std::make_unique<PngStream>(std::move(input));
  }
  input->CheckError();
  throw ToolError(input->Name() +
                  ": is neither PNG nor y4m; if it is raw pictures, give --size WIDTHxHEIGHT");
}

}  // namespace zlibvideo
