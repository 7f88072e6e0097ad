#ifndef ZLIBVIDEO_EXAMPLES_PLAYER_SDL_H
#define ZLIBVIDEO_EXAMPLES_PLAYER_SDL_H

#include <SDL.h>

#include <memory>
#include <stdexcept>

/// Throws what SDL says about its last failure, unless `success`.
inline void Succeed(bool success) {
  if (!success) throw std::runtime_error(SDL_GetError());
}

/// SDL with its windows, for as long as this lives.
struct Sdl {
  Sdl() {
    Succeed(SDL_Init(SDL_INIT_VIDEO) == 0);
    SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "linear");
  }
  Sdl(const Sdl&) = delete;
  Sdl& operator=(const Sdl&) = delete;
  ~Sdl() { SDL_Quit(); }
};

struct Release {
  void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
  void operator()(SDL_Renderer* renderer) const { SDL_DestroyRenderer(renderer); }
  void operator()(SDL_Texture* texture) const { SDL_DestroyTexture(texture); }
};

/// An object of SDL's.
template <typename T>
using Owned = std::unique_ptr<T, Release>;

/// Takes what a call of SDL made; throws when it made nothing.
template <typename T>
Owned<T> Own(T* made) {
  Succeed(made != nullptr);
  return Owned<T>(made);
}

#endif  // ZLIBVIDEO_EXAMPLES_PLAYER_SDL_H
