#ifndef ZLIBVIDEO_TOOLS_INFO_BASE64_H
#define ZLIBVIDEO_TOOLS_INFO_BASE64_H

#include <string>
#include <vector>

namespace zlibvideo {

/// Bytes as text (RFC 4648), padded.
std::string EncodeBase64(const std::vector<unsigned char>& bytes);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_BASE64_H
