#include "decoder/Version.h"

// NOLINTBEGIN(cppcoreguidelines-macro-usage): only macros make text of macros
#define ZLIBVIDEO_TEXT_OF(number) #number
#define ZLIBVIDEO_DOTTED(major, minor, patch) \
  ZLIBVIDEO_TEXT_OF(major) "." ZLIBVIDEO_TEXT_OF(minor) "." ZLIBVIDEO_TEXT_OF(patch)
// NOLINTEND(cppcoreguidelines-macro-usage)

const char* zlibvideo::LibraryVersion() {
  return ZLIBVIDEO_DOTTED(ZLIBVIDEO_VERSION_MAJOR, ZLIBVIDEO_VERSION_MINOR,
                          ZLIBVIDEO_VERSION_PATCH);
}
