#include <memory>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/decode/formats/PictureFilesSink.h"
#include "tools/pictures/PngSeries.h"

namespace zlibvideo {

std::unique_ptr<FrameSink> MakePngSink(const OutputOptions& options) {
  return std::make_unique<PictureFilesSink>(
      options.path, options.jobs, [series = std::make_shared<PngSeries>()](const FrameView& frame) {
        return series->Begin(frame);
      });
}

}  // namespace zlibvideo
