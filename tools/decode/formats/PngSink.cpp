#include <deque>
#include <filesystem>
#include <memory>
#include <new>
#include <vector>

#include "tools/decode/formats/NamePattern.h"
#include "tools/decode/formats/OutputFormat.h"
#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/parallel/Parallel.h"
#include "tools/pictures/Png.h"

namespace zlibvideo {
namespace {

/// Writes a PNG file for each picture, numbered by its message from 1. With "-" the files go to
/// standard output in a row. A name without a number is for a single picture. Other threads
/// encode the pictures. If a picture fails, the files before it stay in place.
class PngSink : public FrameSink {
 public:
  /// Throws a `ToolError` if the path is no `NamePattern`.
  explicit PngSink(const OutputOptions& options);

  void WritePicture(std::uint64_t index, const FrameView& frame) override;
  void CatchUp() override;
  void Finish() override { CatchUp(); }

 private:
  void WriteOldest();

  std::string fPath;
  NamePattern fPattern;
  bool fHasPicture = false;
  /// The pictures in `fFiles`.
  std::deque<std::uint64_t> fNumbers;
  OrderedWork<std::vector<unsigned char>> fFiles;
};

PngSink::PngSink(const OutputOptions& options) : fPath(options.path), fFiles(options.jobs) {
  if (!NamePattern::Parse(fPath, &fPattern)) throw ToolError(fPath + ": " + NamePattern::kRule);
}

void PngSink::WritePicture(std::uint64_t index, const FrameView& frame) {
  const std::uint64_t number = index + 1;
  if (fHasPicture && !fPattern.HasNumber() && !IsStandardOutput(fPath)) {
    CatchUp();
    throw ToolError(fPath + ": holds one picture, which is written; for picture " +
                    std::to_string(number) + " and later use a numbered name, such as %04d" +
                    std::filesystem::path(fPath).extension().string() +
                    ", or choose one picture with --from and --to");
  }
  fHasPicture = true;
  const auto picture = std::make_shared<Picture>();
  CopyColours(frame, picture.get());
  fFiles.Begin([picture] { return EncodePng(*picture); });
  fNumbers.push_back(number);
  if (fFiles.IsFull()) WriteOldest();
}

void PngSink::CatchUp() {
  while (!fFiles.IsEmpty()) WriteOldest();
}

void PngSink::WriteOldest() {
  const std::string name = fPattern.Name(fNumbers.front());
  fNumbers.pop_front();
  std::vector<unsigned char> png;
  try {
    png = fFiles.Take();
  } catch (const std::bad_alloc&) {
    throw ToolError(OutputName(name) + ": not enough memory");
  }
  OutputFile file(name);
  file.Write(png.data(), png.size());
  file.Commit();
}

}  // namespace

std::unique_ptr<FrameSink> MakePngSink(const OutputOptions& options) {
  return std::make_unique<PngSink>(options);
}

}  // namespace zlibvideo
