#include "tools/pictures/PngPictures.h"

#include <utility>

#include "tools/pictures/Png.h"

namespace zlibvideo {

PngFiles::PngFiles(std::vector<std::string> paths, unsigned int jobs)
    : fPaths(std::move(paths)), fAhead(jobs) {}

bool PngFiles::Next(Picture* picture) {
  if (fRead == fPaths.size()) return false;
  ++fRead;
  ReadAhead();
  *picture = fAhead.IsEmpty() ? ReadStandardInput() : fAhead.Take();
  ReadAhead();
  return true;
}

void PngFiles::ReadAhead() {
  while (!fAhead.IsFull() && fBegun < fPaths.size() && fPaths[fBegun] != kStandardStreamName) {
    fAhead.Begin([&path = fPaths[fBegun]] { return ReadPng(path); });
    ++fBegun;
  }
}

Picture PngFiles::ReadStandardInput() {
  ++fBegun;
  if (!fStandardInput.has_value()) fStandardInput.emplace(kStandardStreamName);
  return ReadPng(&*fStandardInput, Name());
}

std::string PngFiles::Name() const {
  return InputName(fPaths[fRead - 1]);
}

bool PngStream::ReadPicture(Picture* picture) {
  if (!Input()->HasMore()) return false;
  *picture = ReadPng(Input(), Name());
  return true;
}

}  // namespace zlibvideo
