#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_OUTPUTFORMAT_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_OUTPUTFORMAT_H

#include <cstdint>
#include <memory>
#include <string>

#include "tools/decode/formats/FrameRate.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Receives the decoded pictures. This class drops them. Messages arrive in order, with their index
/// from 0. Messages outside the wanted range do not arrive. Errors of the output throw `ToolError`.
class FrameSink {
 public:
  FrameSink() = default;
  virtual ~FrameSink() = default;
  FrameSink(const FrameSink&) = delete;
  FrameSink& operator=(const FrameSink&) = delete;

  /// A message was decoded. `frame` is valid for this call.
  virtual void WritePicture(std::uint64_t /*index*/, const FrameView& /*frame*/) {}
  /// A message failed. `frame` is the picture before it.
  virtual void NoteFailure(std::uint64_t /*index*/, const FrameView& /*frame*/) {}
  /// Writes the pictures that other threads still encode.
  virtual void CatchUp() {}
  /// Completes the output after the last message. Without this call, no output is left.
  virtual void Finish() {}
};

/// Options of all formats.
struct OutputOptions {
  /// A file name, or "-". For a format with a file for each picture, a `NamePattern`, or "-".
  std::string path;
  FrameRate frameRate;
  /// 8-bit samples in y4m, which lose colours, instead of 10-bit samples, which are exact.
  bool y4m8Bit = false;
  /// Threads to use, at least 1.
  unsigned int jobs = 1;
};

/// A format of `decode`.
struct OutputFormat {
  enum class Files {
    kNone,
    kOne,
    /// Numbered by a `NamePattern`.
    kOnePerPicture,
  };

  /// On the command line, and as an extension of file names.
  const char* name;
  /// Another name and extension.
  const char* otherExtension = "";
  Files files = Files::kNone;
  /// A list for people and programs, by default on standard output.
  bool isText = false;
  bool hasFrameRate = false;
  std::unique_ptr<FrameSink> (*make)(const OutputOptions& options);

  bool WritesPictures() const { return files != Files::kNone && !isText; }
};

/// The format with this name or extension. Null for any other.
const OutputFormat* FindFormat(const std::string& name);

/// Compares each message with a line of a file that format hash wrote.
std::unique_ptr<FrameSink> MakeVerifySink(const std::string& path);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_OUTPUTFORMAT_H
