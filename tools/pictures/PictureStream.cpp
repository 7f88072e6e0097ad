#include "tools/pictures/PictureStream.h"

#include "tools/files/ToolError.h"

namespace zlibvideo {

bool PictureStream::Next(Picture* picture) {
  ++fNumber;
  try {
    if (ReadPicture(picture)) return true;
    fInput->CheckError();
  } catch (const ToolError&) {
    if (!fInput->EndedBySignal()) throw;
  }
  if (fNumber > 1) return false;
  if (fInput->EndedBySignal()) throw StoppedBySignal();
  throw ToolError(fInput->Name() + ": has no pictures");
}

std::string PictureStream::Name() const {
  return fInput->Name() + ": picture " + std::to_string(fNumber);
}

const std::vector<unsigned char>& PictureStream::ReadBytes(std::size_t size) {
  const std::size_t got = fInput->Read(size, &fBytes);
  if (got == size) return fBytes;
  fInput->CheckError();
  throw ToolError(Name() + " is cut off: it has " + std::to_string(got) + " of " +
                  std::to_string(size) + " bytes");
}

}  // namespace zlibvideo
