#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_OUTPUTFORMAT_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_OUTPUTFORMAT_H

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "tools/decode/formats/FrameRate.h"
#include "tools/pictures/Picture.h"

namespace zlibvideo {

/// Where decoded pictures go; of itself it drops them. Messages arrive in order, with their index
/// from 0; those that were not asked for are left out. Errors of the output are thrown as
/// `ToolError`.
class FrameSink {
 public:
  FrameSink() = default;
  virtual ~FrameSink() = default;
  FrameSink(const FrameSink&) = delete;
  FrameSink& operator=(const FrameSink&) = delete;

  /// A message was decoded. `frame` is valid for this call.
  virtual void WritePicture(std::uint64_t /*index*/, const FrameView& /*frame*/) {}
  /// A message failed; `frame` is the picture that still stands.
  virtual void NoteFailure(std::uint64_t /*index*/, const FrameView& /*frame*/) {}
  /// Writes what was held back to be encoded at leisure: messages that arrived are done with, but
  /// for completing the output.
  virtual void CatchUp() {}
  /// Nothing more comes: completes the output. An output of which this is not called is dropped.
  virtual void Finish() {}
};

/// What is asked of a format.
struct OutputOptions {
  /// A file name, or "-". Of a format with a file for each picture a `NamePattern`, or "-".
  std::string path;
  FrameRate frameRate;
  /// 8-bit samples in y4m, which do not keep every colour, instead of 10-bit ones, which do.
  bool y4m8Bit = false;
  /// Threads to use, at least 1.
  unsigned int jobs = 1;
};

/// One of the forms that `decode` writes pictures in.
struct OutputFormat {
  enum class Files {
    kNone,
    kOne,
    /// Where the size of the pictures changes, another file begins: movie-2.webp. Made with a
    /// `MovieSink`.
    kOnePerSize,
    /// Numbered as a `NamePattern` says. Made with a `PictureFilesSink`.
    kOnePerPicture,
  };

  /// As the command line takes it, and an extension of file names.
  const char* name;
  /// One more extension, or null.
  const char* otherExtension = nullptr;
  Files files = Files::kNone;
  /// A list to be read, on standard output unless a file is named.
  bool isText = false;
  bool hasFrameRate = false;
  /// What help says of it, in lines of up to 71 characters; it adds the extensions if there are
  /// two.
  const char* help;
  std::unique_ptr<FrameSink> (*make)(const OutputOptions& options);

  bool WritesPictures() const { return files != Files::kNone && !isText; }
};

/// All formats, in the order of help.
std::span<const OutputFormat> OutputFormats();
/// The format with that name on the command line; null when there is none.
const OutputFormat* FormatByName(const std::string& name);
/// The format that the extension of a file name stands for; null when there is none.
const OutputFormat* FormatByExtension(const std::string& fileName);

/// Compares each message with the next of the lines in a file that format hash wrote.
std::unique_ptr<FrameSink> MakeVerifySink(const std::string& path);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_OUTPUTFORMAT_H
