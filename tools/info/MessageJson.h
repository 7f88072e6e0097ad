#ifndef ZLIBVIDEO_TOOLS_INFO_MESSAGEJSON_H
#define ZLIBVIDEO_TOOLS_INFO_MESSAGEJSON_H

#include <nlohmann/json.hpp>

#include "tools/info/MessageReport.h"

namespace zlibvideo {

/// A message's report as one object. All messages have the same keys; a value that the message has
/// nothing for is null.
///
///   index          of the message, from 0
///   offset         where in the file it begins, in bytes
///   bytes          its length
///   decoded        true or false
///   frame_type     0 to 15; key_frame: whether that is a key frame's
///   codec_type     0 to 15
///   picture        width and height, in pixels
///   block          width and height, in pixels
///   grid           columns and rows, in blocks
///   flags          version 2: the flags byte
///   palette        none, installed, empty, past end, unreadable, wrong size
///   palette_bytes  size of the compressed palette
///   passes         passes over the grid that the message has begun
///   changed_blocks blocks with a record that is not empty
///   records        for each kind of record: how many were decoded, and their bytes in all
///   unread_bytes   bytes behind the last record
///   failure        what is wrong, offset in the message in bytes; pass (from 1), row (from 0, the
///                  bottom of the picture) and column (from 0) when it is about a block, else null
nlohmann::ordered_json MessageJson(const MessageReport& report);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_MESSAGEJSON_H
