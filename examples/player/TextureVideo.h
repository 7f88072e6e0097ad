#ifndef ZLIBVIDEO_EXAMPLES_PLAYER_TEXTUREVIDEO_H
#define ZLIBVIDEO_EXAMPLES_PLAYER_TEXTUREVIDEO_H

#include <SDL.h>

#include <zlibvideo/host/SBitmapCore.h>
#include <zlibvideo/host/SObject.h>

#include "examples/player/Sdl.h"

/// The bitmap that the decoder draws into: a texture, whose pixels are there, somewhere, while they
/// are locked. They may hold anything then; as the texture is exactly as large as the picture, the
/// decoder writes all of them. What SDL cannot do is thrown, as `std::runtime_error`.
class TextureBitmap : public SBitmapCore {
 public:
  /// The renderer outlives this.
  explicit TextureBitmap(SDL_Renderer* renderer) : fRenderer(renderer) {}

  /// Null as long as nothing was decoded.
  SDL_Texture* Texture() const { return fTexture.get(); }
  void DropTexture() { fTexture.reset(); }

  /// Width and height in pixels. A texture of that size is kept, with its pixels; when there can be
  /// none, the old one is.
  void Resize(int width, int height);
  void Lock();
  void Unlock();

 private:
  SDL_Renderer* fRenderer;
  Owned<SDL_Texture> fTexture;
};

/// The video object, with its bitmap.
class TextureVideo : public SObject {
 public:
  explicit TextureVideo(SDL_Renderer* renderer) : fBitmap(renderer) {
    SetRenderRecord(&fRecord, false);
  }

  TextureBitmap& Bitmap() { return fBitmap; }
  const TextureBitmap& Bitmap() const { return fBitmap; }

 private:
  TextureBitmap fBitmap;
  RenderRecord fRecord = {&fBitmap};
};

#endif  // ZLIBVIDEO_EXAMPLES_PLAYER_TEXTUREVIDEO_H
