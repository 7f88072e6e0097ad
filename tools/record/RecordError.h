#ifndef ZLIBVIDEO_TOOLS_RECORD_RECORDERROR_H
#define ZLIBVIDEO_TOOLS_RECORD_RECORDERROR_H

#include <stdexcept>

namespace zlibvideo {

/// A picture cannot be recorded. The text gives the reason and does not name the picture.
class RecordError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_RECORD_RECORDERROR_H
