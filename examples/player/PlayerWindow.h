#ifndef ZLIBVIDEO_EXAMPLES_PLAYER_PLAYERWINDOW_H
#define ZLIBVIDEO_EXAMPLES_PLAYER_PLAYERWINDOW_H

#include <SDL.h>

#include <cstddef>
#include <string>

#include "examples/player/Playback.h"
#include "examples/player/Sdl.h"

/// A window that plays a message file, and its keys.
class PlayerWindow {
 public:
  static constexpr int kMinFps = 1;
  static constexpr int kMaxFps = 240;

  /// `file` as for `MessageInput`; `fps` messages a second are played.
  PlayerWindow(const std::string& file, int fps);

  /// Returns when the user has closed the window. Throws what ends it before.
  void Run();

 private:
  static double Now() { return static_cast<double>(SDL_GetTicks64()); }  // milliseconds

  void Play();
  void Draw();
  void SizeWindow(int width, int height);
  void ShowTitle();
  int PauseMs() const;
  void HandleEvents(int waitMs);
  void Handle(const SDL_Event& event);
  void HandleKey(SDL_Keycode key);
  void TogglePlaying();
  void Step(std::size_t message);

  Sdl fSdl;
  Owned<SDL_Window> fWindow;
  Owned<SDL_Renderer> fRenderer;
  Playback fPlayback;
  std::string fName;
  int fFps;
  double fDueMs = 0;  // when playing goes on to the next message
  bool fPlaying = true;
  bool fStale = true;   // the window does not show what it should
  bool fSized = false;  // the window was sized for a picture
  bool fRunning = true;
};

#endif  // ZLIBVIDEO_EXAMPLES_PLAYER_PLAYERWINDOW_H
