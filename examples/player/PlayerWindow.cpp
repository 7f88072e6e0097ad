#include "examples/player/PlayerWindow.h"

#include <algorithm>
#include <filesystem>

namespace {

constexpr int kInputPauseMs = 10;  // between looks at an input that has nothing to read
constexpr int kFramePixels = 48;   // room for what a desktop puts round a window

}  // namespace

// The window is hidden at first; of the renderers that SDL tries, the software one is the last.
PlayerWindow::PlayerWindow(const std::string& file, int fps)
    : fWindow(Own(SDL_CreateWindow("", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, 640, 360,
                                   SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE))),
      fRenderer(Own(SDL_CreateRenderer(fWindow.get(), -1, 0))),
      fPlayback(file, fRenderer.get()),
      fName(file == "-" ? "standard input" : std::filesystem::path(file).filename().string()),
      fFps(fps) {}

void PlayerWindow::Run() {
  while (fRunning) {
    const bool reads = fPlayback.ReadSlice();
    Play();
    fStale |= fPlayback.DecodeSlice();
    if (fStale && fPlayback.IsThere()) Draw();
    ShowTitle();
    if (fSized || !reads) SDL_ShowWindow(fWindow.get());
    HandleEvents(reads || !fPlayback.IsThere() ? 0 : PauseMs());
  }
}

void PlayerWindow::Play() {
  if (!fPlaying || !fPlayback.IsThere() || Now() < fDueMs) return;
  if (fPlayback.IsAtLast()) fPlaying = fPlayback.IsOpen();
  fPlayback.Seek(fPlayback.Wanted() + 1);
  fDueMs = std::max(fDueMs + 1000.0 / fFps, Now());
}

void PlayerWindow::Draw() {
  const TextureBitmap& picture = fPlayback.Picture();
  SDL_RenderClear(fRenderer.get());
  if (picture.Texture() != nullptr) {
    if (!fSized) SizeWindow(picture.GetWidth(), picture.GetHeight());
    // Fitted into the window, with its aspect kept.
    SDL_RenderSetLogicalSize(fRenderer.get(), picture.GetWidth(), picture.GetHeight());
    SDL_RenderCopy(fRenderer.get(), picture.Texture(), nullptr, nullptr);
  }
  SDL_RenderPresent(fRenderer.get());
  fStale = false;
}

// As large as the first picture, where the screen has room for that.
void PlayerWindow::SizeWindow(int width, int height) {
  fSized = true;
  SDL_Rect room;
  if (SDL_GetDisplayUsableBounds(SDL_GetWindowDisplayIndex(fWindow.get()), &room) != 0) return;
  const double scale = std::min({1.0, static_cast<double>(room.w - kFramePixels) / width,
                                 static_cast<double>(room.h - kFramePixels) / height});
  SDL_SetWindowSize(fWindow.get(), std::max(1, static_cast<int>(width * scale)),
                    std::max(1, static_cast<int>(height * scale)));
  SDL_SetWindowPosition(fWindow.get(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
}

void PlayerWindow::ShowTitle() {
  const bool waits = fPlayback.IsAtLast() && fPlayback.IsOpen();
  const std::string title = fName + " – message " + std::to_string(fPlayback.Decoded()) + " of " +
                            std::to_string(fPlayback.Count()) + ", " +
                            std::to_string(fPlayback.Failed()) + " failed, " +
                            std::to_string(fFps) + " fps, " +
                            (!fPlaying ? "paused"
                             : waits   ? "waiting"
                                       : "playing");
  if (title == SDL_GetWindowTitle(fWindow.get())) return;
  SDL_SetWindowTitle(fWindow.get(), title.c_str());
}

// For how long there is nothing to do unless an event comes; negative for ever.
int PlayerWindow::PauseMs() const {
  if (!fPlaying) return fPlayback.IsOpen() ? kInputPauseMs : -1;
  const int untilDue = static_cast<int>(std::max(fDueMs - Now(), 0.0));
  return fPlayback.IsOpen() ? std::min(untilDue, kInputPauseMs) : untilDue;
}

void PlayerWindow::HandleEvents(int waitMs) {
  SDL_Event event;
  if (SDL_WaitEventTimeout(&event, waitMs) == 0) return;
  do {
    Handle(event);
  } while (SDL_PollEvent(&event) != 0);
}

void PlayerWindow::Handle(const SDL_Event& event) {
  if (event.type == SDL_QUIT) fRunning = false;
  if (event.type == SDL_KEYDOWN) HandleKey(event.key.keysym.sym);
  // Uncovered, or of another size.
  if (event.type == SDL_WINDOWEVENT || event.type == SDL_RENDER_TARGETS_RESET) fStale = true;
  // Which takes the texture away.
  if (event.type == SDL_RENDER_DEVICE_RESET) fPlayback.Restart();
}

void PlayerWindow::HandleKey(SDL_Keycode key) {
  switch (key) {
    case SDLK_SPACE:
      return TogglePlaying();
    case SDLK_RIGHT:
      return Step(fPlayback.Wanted() + 1);
    case SDLK_LEFT:
      return Step(fPlayback.Wanted() - 1);
    case SDLK_HOME:
      return fPlayback.Seek(1);
    case SDLK_END:
      return fPlayback.Seek(fPlayback.Count());
    case SDLK_PLUS:
    case SDLK_KP_PLUS:
    case SDLK_EQUALS:  // where + is typed with Shift
      fFps = std::min(fFps * 2, kMaxFps);
      return;
    case SDLK_MINUS:
    case SDLK_KP_MINUS:
      fFps = std::max(fFps / 2, kMinFps);
      return;
    case SDLK_q:
    case SDLK_ESCAPE:
      fRunning = false;
      return;
  }
}

// At the end of what will not go on, plays it again.
void PlayerWindow::TogglePlaying() {
  fPlaying = !fPlaying;
  fDueMs = Now() + 1000.0 / fFps;
  if (fPlaying && fPlayback.IsAtLast() && !fPlayback.IsOpen()) fPlayback.Seek(1);
}

void PlayerWindow::Step(std::size_t message) {
  fPlaying = false;
  fPlayback.Seek(message);
}
