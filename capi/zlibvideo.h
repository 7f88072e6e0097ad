#ifndef ZLIBVIDEO_CAPI_ZLIBVIDEO_H
#define ZLIBVIDEO_CAPI_ZLIBVIDEO_H

// The decoder in C11, for programs without a host of their own. Decoders share nothing. Different
// decoders may run on different threads. Calls on the same decoder must not overlap.

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Decodes one stream, and keeps its picture.
typedef struct zlibvideo_decoder zlibvideo_decoder;

/// A rectangle in pixels of the picture. Row 0 is the top row.
typedef struct zlibvideo_area {
  int32_t left;
  int32_t top;
  int32_t width;
  int32_t height;
} zlibvideo_area;

/// The picture of a decoder. All memory belongs to the decoder.
typedef struct zlibvideo_picture {
  /// Rows from the top, 4 bytes a pixel: red, green, blue, and opacity, which is 255. Null before
  /// the first picture.
  const unsigned char* pixels;
  /// Bytes from a row to the next row.
  size_t row_length;
  /// Pixels. 0 before the first picture.
  int32_t width;
  int32_t height;
  /// Pixels of a block. The blocks at the right and at the top of the picture may be cut.
  int32_t block_width;
  int32_t block_height;
  /// 1 if the stream has filled every block. 0 if the picture has gaps, which are black.
  int32_t complete;
  /// The blocks that the last `zlibvideo_decode` drew, and the least area around them. If it drew
  /// nothing, the count is 0 and the area is empty.
  size_t changed_count;
  const zlibvideo_area* changed_blocks;
  zlibvideo_area changed;
} zlibvideo_picture;

#pragma GCC visibility push(default)

/// Returns a new decoder, or null without memory. Messages fail if `zlibvideo_memory_bound` is
/// greater than `memory_limit` bytes. `SIZE_MAX` is no limit.
zlibvideo_decoder* zlibvideo_open(size_t memory_limit);

/// Destroys the decoder and its picture. Does nothing with null.
void zlibvideo_close(zlibvideo_decoder* decoder);

/// Decodes a message of `length` bytes and draws the picture. The message does not include the 3
/// bytes of length that precede it in a file. The bytes may be damaged. They are only read, and are
/// not needed afterwards.
///
/// Returns 1, or 0 if the message fails: it is damaged, over the memory limit, or memory ran out.
/// The picture then is as before. It is lost in a single case: the size of the picture or of its
/// blocks changed, and memory ran out. The next message can be decoded. After memory ran out, a
/// block may show wrong pixels until the stream sends the block whole, and its palette again.
int zlibvideo_decode(zlibvideo_decoder* decoder, const void* message, size_t length);

/// Returns the picture, never null. Its fields are valid until the next `zlibvideo_decode`. The
/// pointer is valid until `zlibvideo_close`.
const zlibvideo_picture* zlibvideo_get_picture(const zlibvideo_decoder* decoder);

/// Returns the most bytes that the decoder holds during and after this message: the blocks, and the
/// larger of the last and the new picture. Buffers of version 2 count from the first message of
/// version 2 on. zlib needs about 40 KiB more during the call. Returns 0 if the message has no
/// valid header: such a message fails.
size_t zlibvideo_memory_bound(const zlibvideo_decoder* decoder, const void* message, size_t length);

/// Returns the version of the library, as in "2.0.0".
const char* zlibvideo_version(void);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif  // ZLIBVIDEO_CAPI_ZLIBVIDEO_H
