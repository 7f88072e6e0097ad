#include <zlib.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <regex>
#include <string>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"

namespace zlibvideo {
namespace {

/// What `decode --format hash` prints for a message, without the line end:
/// "INDEX STATUS WIDTHxHEIGHT CRC32". The index is from 0, the status 1 for decoded or 0 for
/// failed; size and checksum are those of the picture after the message. The checksum is the
/// CRC-32 of all its bytes in 8 hexadecimal digits.
std::string HashLine(std::uint64_t index, bool decoded, const FrameView& frame) {
  // An empty picture has no bytes, and a null pointer asks zlib for its initial value.
  const uLong crc = frame.pixels == nullptr ? 0 : crc32_z(0, frame.pixels, frame.ByteCount());
  char digits[sizeof("01234567")];
  std::snprintf(digits, sizeof(digits), "%08lx", crc & 0xFFFFFFFFUL);
  return std::to_string(index) + (decoded ? " 1 " : " 0 ") + std::to_string(frame.width) + "x" +
         std::to_string(frame.height) + " " + digits;
}

/// Whether `text` could be one.
bool IsHashLine(const std::string& text) {
  static const std::regex kForm("[0-9]+ [01] [0-9]+x[0-9]+ [0-9a-f]{8}");
  return std::regex_match(text, kForm);
}

/// Writes a `HashLine` for every message, failed ones included.
class HashSink : public FrameSink {
 public:
  explicit HashSink(const std::string& path) : fFile(path) {}

  void WritePicture(std::uint64_t index, const FrameView& frame) override {
    fFile.WriteLine(HashLine(index, true, frame));
  }
  void NoteFailure(std::uint64_t index, const FrameView& frame) override {
    fFile.WriteLine(HashLine(index, false, frame));
  }
  void Finish() override { fFile.Commit(); }

 private:
  OutputFile fFile;
};

/// Longer than any hash line; bounds memory when the file is not a list.
constexpr int kMaxLine = 256;

/// Compares every message's `HashLine` with the next line of a file. At the first difference it
/// throws a `ToolError`, with `kExitMismatch` unless the file is not a list of such lines at all.
class VerifySink : public FrameSink {
 public:
  /// Opens the file, or standard input for "-".
  explicit VerifySink(const std::string& path);

  void WritePicture(std::uint64_t index, const FrameView& frame) override;
  void NoteFailure(std::uint64_t index, const FrameView& frame) override;
  /// The file must have ended, too.
  void Finish() override;

 private:
  void Compare(std::uint64_t index, const std::string& line);
  /// The next line without its end; nothing at the end of the file.
  std::optional<std::string> ReadLine();

  std::string fName;
  InputFile fFile;
  std::uint64_t fLineCount = 0;
};

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
  throw ToolError("message " + std::to_string(index + 1) + " came out as \"" + line + "\", but " +
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

}  // namespace

std::unique_ptr<FrameSink> MakeHashSink(const OutputOptions& options) {
  return std::make_unique<HashSink>(options.path);
}

std::unique_ptr<FrameSink> MakeVerifySink(const std::string& path) {
  return std::make_unique<VerifySink>(path);
}

}  // namespace zlibvideo
