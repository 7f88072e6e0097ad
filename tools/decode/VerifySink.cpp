#include "tools/decode/VerifySink.h"

#include <cerrno>

#include "tools/cli/ToolError.h"
#include "tools/decode/HashLine.h"

namespace zlibvideo {
namespace {

/// Longer than any hash line; bounds memory when the file is not a list.
constexpr int kMaxLine = 256;

}  // namespace

VerifySink::VerifySink(const std::string& path) : fName(InputName(path)), fFile(OpenInput(path)) {}

void VerifySink::WritePicture(std::uint64_t index, const FrameView& frame) {
  Compare(index, HashLine(index, true, frame));
}

void VerifySink::NoteFailure(std::uint64_t index, const FrameView& frame) {
  Compare(index, HashLine(index, false, frame));
}

void VerifySink::Finish() {
  if (!ReadLine().has_value()) return;
  throw ToolError(
      fName + ": line " + std::to_string(fLineCount) + ": the stream has no such message",
      kExitMismatch);
}

void VerifySink::Compare(std::uint64_t index, const std::string& line) {
  const std::optional<std::string> expected = ReadLine();
  if (expected == line) return;
  if (expected.has_value() && fLineCount == 1 && !IsHashLine(*expected)) {
    throw ToolError(fName + ": is not a list written by --format hash");
  }
  throw ToolError("message " + std::to_string(index) + " came out as \"" + line + "\", but " +
                      fName +
                      (expected.has_value()
                           ? " line " + std::to_string(fLineCount) + " is \"" + *expected + "\""
                           : " ends before it"),
                  kExitMismatch);
}

std::optional<std::string> VerifySink::ReadLine() {
  char buffer[kMaxLine];
  if (std::fgets(buffer, sizeof(buffer), fFile.get()) == nullptr) {
    if (std::ferror(fFile.get()) != 0) throw ToolError::FromSystem(fName, "cannot be read", errno);
    return std::nullopt;
  }
  ++fLineCount;
  std::string line = buffer;
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
  return line;
}

}  // namespace zlibvideo
