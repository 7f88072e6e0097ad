#ifndef ZLIBVIDEO_TOOLS_DECODE_WEBPWRITER_H
#define ZLIBVIDEO_TOOLS_DECODE_WEBPWRITER_H

#include <cstdint>
#include <memory>
#include <string>

#include "tools/cli/OutputFile.h"
#include "tools/decode/FrameRate.h"
#include "tools/decode/MovieWriter.h"

struct WebPAnimEncoder;

namespace zlibvideo {

/// Writes a lossless animated WebP that plays in a loop. The compressed movie is held in memory
/// until it is complete: the format's header comes first and tells its length.
class WebpWriter : public MovieWriter {
 public:
  WebpWriter(const std::string& path, const FrameView& first, FrameRate rate);
  ~WebpWriter() override;

  void Add(const FrameView& frame) override;
  void Finish() override;

 private:
  struct DeleteEncoder {
    void operator()(WebPAnimEncoder* encoder) const;
  };

  [[noreturn]] void Fail(const std::string& problem) const;
  /// When the next picture begins, in milliseconds.
  int Now() const { return static_cast<int>(fRate.StartOf(fPictures)); }

  OutputFile fFile;
  FrameRate fRate;
  std::uint64_t fPictures = 0;
  std::unique_ptr<WebPAnimEncoder, DeleteEncoder> fEncoder;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_WEBPWRITER_H
