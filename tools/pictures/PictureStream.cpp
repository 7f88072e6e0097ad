#include "tools/pictures/PictureStream.h"

#include <utility>

#include "tools/files/ToolError.h"

namespace zlibvideo {

PictureStream::PictureStream(ByteInput input) : fInput(std::move(input)) {}

bool PictureStream::Next(Picture* picture) {
  ++fNumber;
  try {
    if (ReadPicture(picture)) return true;
    fInput.CheckError();
  } catch (const ToolError&) {
    if (fInput.EndedBy() == nullptr) throw;
  }
  if (fNumber > 1) return false;
  if (fInput.EndedBy() != nullptr) fInput.EndedBy()->Obey();
  throw ToolError(fInput.Name() + ": has no pictures");
}

std::string PictureStream::Name() const {
  return fInput.Name() + ": picture " + std::to_string(fNumber);
}

const std::vector<unsigned char>& PictureStream::ReadBytes(std::size_t size) {
  const std::size_t got = fInput.Read(size, &fBytes);
  if (got == size) return fBytes;
  fInput.CheckError();
  throw ToolError(Name() + " is cut off: " + std::to_string(got) + " of its " +
                  std::to_string(size) + " bytes are there");
}

}  // namespace zlibvideo
