#include <zlib.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <regex>
#include <string>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/files/ToolError.h"
#include "tools/terminal/StandardError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

/// Longer than any hash line. Bounds memory when a file is not a list.
constexpr std::size_t kMaxLine = 256;

/// The line of a message, without its end: "INDEX STATUS WIDTHxHEIGHT CRC32". The index is from 0;
/// the status is 1 for decoded, 0 for failed. Size and checksum are those of the picture after the
/// message. The checksum is the CRC-32 of all bytes of the picture in 8 hexadecimal digits.
std::string HashLine(std::uint64_t index, bool decoded, const FrameView& frame) {
  // An empty picture has no bytes. A null pointer returns zlib's initial value.
  const uLong crc = frame.pixels == nullptr ? 0 : crc32_z(0, frame.pixels, frame.ByteCount());
  char digits[sizeof("01234567")];
  std::snprintf(digits, sizeof(digits), "%08lx", crc & 0xFFFFFFFFUL);
  return std::to_string(index) + (decoded ? " 1 " : " 0 ") + SizeText(frame.width, frame.height) +
         " " + digits;
}

bool IsHashLine(const std::string& text) {
  static const std::regex kForm("[0-9]+ [01] [0-9]+x[0-9]+ [0-9a-f]{8}");
  return std::regex_match(text, kForm);
}

/// Has a line for every message, failed messages included.
class LineSink : public FrameSink {
 public:
  void WritePicture(std::uint64_t index, const FrameView& frame) final {
    TakeLine(index, HashLine(index, true, frame));
  }
  void NoteFailure(std::uint64_t index, const FrameView& frame) final {
    TakeLine(index, HashLine(index, false, frame));
  }

 private:
  virtual void TakeLine(std::uint64_t index, const std::string& line) = 0;
};

/// Writes the lines to a file.
class HashSink : public LineSink {
 public:
  explicit HashSink(const std::string& path) : fFile(path) {}

  void Finish() override { fFile.Commit(); }

 private:
  void TakeLine(std::uint64_t /*index*/, const std::string& line) override {
    fFile.WriteLine(line);
  }

  OutputFile fFile;
};

/// Compares the lines with those of a file, or of standard input for "-". Prints the first
/// difference. Throws `ToolError` when the file is not a list, and at the end, with
/// `kExitMismatch`, when there was a difference.
class VerifySink : public LineSink {
 public:
  explicit VerifySink(const std::string& path) : fFile(path) {}

  void Finish() override;

 private:
  void TakeLine(std::uint64_t index, const std::string& line) override;
  /// The next line without its end. Nothing at the end of the file.
  std::optional<std::string> ReadLine();

  InputFile fFile;
  std::uint64_t fMessages = 0;
  std::uint64_t fDifferences = 0;
};

void VerifySink::TakeLine(std::uint64_t index, const std::string& line) {
  const std::optional<std::string> expected = ReadLine();
  ++fMessages;
  if (expected == line) return;
  if (index == 0 && expected && !IsHashLine(*expected)) {
    throw ToolError(fFile.Name() + ": is not a list written by --format hash");
  }
  if (fDifferences++ > 0) return;
  const std::string number = std::to_string(index + 1);
  PrintLine("message " + number + " came out as \"" + line + "\", but " + fFile.Name() +
            (expected ? " line " + number + " is \"" + *expected + "\""
                      : std::string(" ends before it")));
}

void VerifySink::Finish() {
  std::uint64_t rest = 0;
  while (ReadLine()) ++rest;
  if (fDifferences == 0 && rest == 0) return;
  std::string result = fFile.Name() + ": " + std::to_string(fDifferences) + " of " +
                       Counted(fMessages, "message") + (fDifferences == 1 ? " differs" : " differ");
  if (rest > 0) result += "; the list has " + Counted(rest, "line") + " too many";
  throw ToolError(result, kExitMismatch);
}

std::optional<std::string> VerifySink::ReadLine() {
  if (!fFile.HasMore()) {
    fFile.CheckError();
    return std::nullopt;
  }
  std::string line;
  fFile.ReadLine(kMaxLine, &line);  // the last line may have no end
  if (line.ends_with('\r')) line.pop_back();
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
