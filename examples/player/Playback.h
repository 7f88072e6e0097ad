#ifndef ZLIBVIDEO_EXAMPLES_PLAYER_PLAYBACK_H
#define ZLIBVIDEO_EXAMPLES_PLAYER_PLAYBACK_H

#include <SDL.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>

#include <zlibvideo/decoder/ZLibVideoDecompressor.h>

#include "examples/player/MessageInput.h"
#include "examples/player/TextureVideo.h"

/// Decodes the messages of an input up to the one that is wanted. Messages count from 1; 0 is
/// before the first.
///
/// To go back, it decodes again from the first: a decoder keeps all that it decoded, and key frames
/// need not send every block. That takes as long as the messages on the way do, so decoding is done
/// in slices: a window stays awake between them.
class Playback {
 public:
  /// `file` as for `MessageInput`; the renderer outlives this.
  Playback(const std::string& file, SDL_Renderer* renderer);

  /// Reads what has come, for some milliseconds; true when there may be more. Throws as
  /// `MessageInput::Read` does.
  bool ReadSlice();
  /// As `MessageInput` has them.
  bool IsOpen() const { return fInput.IsOpen(); }
  std::size_t Count() const { return fInput.Count(); }

  /// From now on this message is wanted, or the nearest that there is.
  void Seek(std::size_t message);
  std::size_t Wanted() const { return fWanted; }
  /// Whether there is no message behind the one that is wanted.
  bool IsAtLast() const { return fWanted >= Count(); }

  /// Decodes towards the wanted message for some milliseconds; false when there is nothing to do.
  bool DecodeSlice();
  /// Whether the texture shows the wanted message; before the first has come, nothing.
  bool IsThere() const { return fDecoded == Target(); }
  /// The message that was decoded last, and how many up to there failed.
  std::size_t Decoded() const { return fDecoded; }
  std::size_t Failed() const { return fFailed; }
  /// A failed message leaves the picture before it; no texture when there is none.
  const TextureBitmap& Picture() const { return fVideo.Bitmap(); }

  /// Forgets the texture and all that was decoded, which the next slices do again.
  void Restart();

 private:
  struct DropReference {
    void operator()(VideoDecompressor* decoder) const { decoder->DecRef(); }
  };

  std::size_t Target() const { return std::min(fWanted, Count()); }
  bool DecodeNext();

  MessageInput fInput;
  TextureVideo fVideo;
  std::unique_ptr<VideoDecompressor, DropReference> fDecoder;
  std::size_t fWanted = 1;
  std::size_t fDecoded = 0;
  std::size_t fFailed = 0;
};

#endif  // ZLIBVIDEO_EXAMPLES_PLAYER_PLAYBACK_H
