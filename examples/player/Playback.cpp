#include "examples/player/Playback.h"

#include <cstdio>
#include <exception>
#include <span>

namespace {

constexpr Uint64 kSliceMs = 15;

}  // namespace

Playback::Playback(const std::string& file, SDL_Renderer* renderer)
    : fInput(file), fVideo(renderer) {
  Restart();
}

bool Playback::ReadSlice() {
  const Uint64 end = SDL_GetTicks64() + kSliceMs;
  while (fInput.Read()) {
    if (SDL_GetTicks64() >= end) return true;
  }
  return false;
}

void Playback::Seek(std::size_t message) {
  fWanted = std::clamp<std::size_t>(message, 1, std::max<std::size_t>(Count(), 1));
}

bool Playback::DecodeSlice() {
  if (IsThere()) return false;
  if (fDecoded > Target()) Restart();
  const Uint64 end = SDL_GetTicks64() + kSliceMs;
  while (!IsThere() && SDL_GetTicks64() < end) {
    if (!DecodeNext()) ++fFailed;
  }
  return true;
}

// Draws what is only on the way to another message, too: when all that follow fail, it is what
// there is to show.
bool Playback::DecodeNext() {
  const std::span<unsigned char> message = fInput.Message(fDecoded++);
  const Vorn::GCAPI::GCRef<SObject> video(&fVideo);
  try {
    return fDecoder->DecompressVideoEmbedded(video, message.data(),
                                             static_cast<int>(message.size()));
  } catch (const std::exception& fault) {  // no memory, or no texture of that size
    std::fprintf(stderr, "example_player: message %zu: %s\n", fDecoded, fault.what());
    return false;
  }
}

void Playback::Restart() {
  fDecoder.reset(new ZLibVideoDecompressor(nullptr, nullptr));
  fVideo.Bitmap().DropTexture();
  fDecoded = 0;
  fFailed = 0;
}
