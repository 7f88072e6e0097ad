#include "tools/pictures/PngFiles.h"

#include <utility>

#include "tools/pictures/Png.h"

namespace zlibvideo {

PngFiles::PngFiles(std::vector<std::string> paths, unsigned int jobs)
    : fPaths(std::move(paths)), fAhead(jobs) {}

bool PngFiles::Next(Picture* picture) {
  if (fRead == fPaths.size()) return false;
  ReadAhead();
  const bool isStandardInput = fBegun == fRead;
  ++fRead;
  *picture = isStandardInput ? ReadStandardInput() : fAhead.Take();
  ReadAhead();
  return true;
}

void PngFiles::ReadAhead() {
  while (!fAhead.IsFull() && fBegun < fPaths.size() && fPaths[fBegun] != kStandardStreamName) {
    fAhead.Begin([&path = fPaths[fBegun++]] { return ReadPng(path); });
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

}  // namespace zlibvideo
