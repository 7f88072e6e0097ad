#include <memory>

#include "tools/decode/formats/OutputFormat.h"
#include "tools/decode/formats/PictureFilesSink.h"
#include "tools/pictures/Png.h"

namespace zlibvideo {

std::unique_ptr<FrameSink> MakePngSink(const OutputOptions& options) {
  return std::make_unique<PictureFilesSink>(options.path, EncodePng);
}

}  // namespace zlibvideo
