#include "tools/decode/formats/PictureFilesSink.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <utility>

#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"

namespace zlibvideo {
namespace {

/// Pictures take unequal times: while one is waited for, more are encoded.
constexpr unsigned int kWaiting = 2;

unsigned int PicturesBegun(unsigned int jobs) {
  return jobs == 1 ? 1 : std::min(jobs, kMaxPicturesAtOnce) + kWaiting;
}

}  // namespace

PictureFilesSink::PictureFilesSink(const std::string& path, unsigned int jobs, Encode encode)
    : fPath(path), fEncode(std::move(encode)), fWork(PicturesBegun(jobs)) {
  if (!NamePattern::Parse(path, &fPattern)) throw ToolError(path + ": " + NamePattern::kRule);
}

void PictureFilesSink::WritePicture(std::uint64_t index, const FrameView& frame) {
  const std::uint64_t number = index + 1;
  if (fHasPicture && !fPattern.HasNumber() && !IsStandardOutput(fPath)) {
    CatchUp();
    throw ToolError(fPath + ": takes one picture, which is written; for picture " +
                    std::to_string(number) + " onwards give a numbered name, such as %04d" +
                    std::filesystem::path(fPath).extension().string() +
                    ", or choose one picture with --from and --to");
  }
  fHasPicture = true;
  fWork.Begin(fEncode(frame));
  fNumbers.push_back(number);
  if (fWork.IsFull()) WriteOldest();
}

void PictureFilesSink::CatchUp() {
  while (!fWork.IsEmpty()) WriteOldest();
}

void PictureFilesSink::WriteOldest() {
  const std::string name = fPattern.Name(fNumbers.front());
  fNumbers.pop_front();
  try {
    fWork.Take()(&fFile);
  } catch (const std::bad_alloc&) {
    throw ToolError(OutputName(name) + ": not enough memory");
  }
  OutputFile file(name);
  file.Write(fFile.data(), fFile.size());
  file.Commit();
}

}  // namespace zlibvideo
