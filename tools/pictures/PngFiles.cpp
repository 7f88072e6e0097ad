#include "tools/pictures/PngFiles.h"

#include <utility>

#include "tools/pictures/Png.h"

namespace zlibvideo {

PngFiles::PngFiles(std::vector<std::string> paths) : fPaths(std::move(paths)) {}

bool PngFiles::Next(Picture* picture) {
  if (fRead == fPaths.size()) return false;
  const std::string& path = fPaths[fRead++];
  if (path != kStandardStreamName) {
    *picture = ReadPng(path);
    return true;
  }
  if (!fStandardInput.has_value()) fStandardInput.emplace(path);
  *picture = ReadPng(&*fStandardInput, Name());
  return true;
}

std::string PngFiles::Name() const {
  return InputName(fPaths[fRead - 1]);
}

}  // namespace zlibvideo
