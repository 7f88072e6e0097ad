#include "tools/decode/formats/PictureFilesSink.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <utility>

#include "tools/cli/OutputFile.h"
#include "tools/cli/ToolError.h"

namespace zlibvideo {
namespace {

/// More pictures at once than decoding can keep up with would only take memory.
constexpr unsigned int kMaxJobs = 8;
/// Pictures take unequal times: as many wait for each that is encoded, lest threads wait.
constexpr unsigned int kWaiting = 2;

unsigned int PicturesBegun(unsigned int jobs) {
  return jobs == 1 ? 1 : std::min(jobs, kMaxJobs) * (1 + kWaiting);
}

/// One of those that a semaphore counts, taken when it is free and given back at the end.
class Slot {
 public:
  explicit Slot(std::counting_semaphore<>* slots) : fSlots(slots) { fSlots->acquire(); }
  ~Slot() { fSlots->release(); }
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;

 private:
  std::counting_semaphore<>* fSlots;
};

}  // namespace

PictureFilesSink::PictureFilesSink(const std::string& path, unsigned int jobs, Encode encode)
    : fPath(path),
      fEncode(std::move(encode)),
      fSlots(std::min(jobs, kMaxJobs)),
      fWork(PicturesBegun(jobs)) {
  std::string problem;
  if (!NamePattern::Parse(path, &fPattern, &problem)) throw ToolError(path + ": " + problem);
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
  fWork.Begin([this, encode = fEncode(frame)] {
    const Slot slot(&fSlots);
    return encode();
  });
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
