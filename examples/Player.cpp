// A host with a window: the decoder draws into a texture of SDL's, whose pixels are only there
// while they are locked. First what the decoder calls, then the input, the player, and main.
//
//   example_player samples/desktop.zvm        (--help says which keys)

#include <SDL.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <zlibvideo/host/SBitmapCore.h>

static void Succeed(bool success) {
  if (!success) throw std::runtime_error(SDL_GetError());
}

// The video object that the decoder is given, and the bitmap that it leads to. A locked texture may
// hold anything: it is exactly as large as the picture, so the decoder writes all of it.
struct TextureVideo : SObject, SBitmapCore {
  TextureVideo() { SetRenderRecord(&record, false); }
  using SBitmapCore::SetSurface;
  RenderRecord record = {this};
  SDL_Renderer* renderer = nullptr;
  SDL_Texture* texture = nullptr;
};

// All bitmaps and video objects here are of that one class. What throws makes its message fail.
void SBitmapCore::LockBits(bool /*forWriting*/) {
  void* pixels = nullptr;
  int rowLength = 0;
  SDL_Texture* const texture = static_cast<TextureVideo*>(this)->texture;
  Succeed(SDL_LockTexture(texture, nullptr, &pixels, &rowLength) == 0);
  SetSurface(GetType(), static_cast<unsigned char*>(pixels), rowLength, GetWidth(), GetHeight());
}
void SBitmapCore::UnlockBits() {
  SetSurface(GetType(), nullptr, 0, GetWidth(), GetHeight());
  SDL_UnlockTexture(static_cast<TextureVideo*>(this)->texture);
}
bool VideoDecompressor::ReallocBitmap(Vorn::GCAPI::GCRef<SObject> video, int width, int height,
                                      bool, bool, EBitmapType, SRECT const*, SPOINT const*) {
  auto& target = static_cast<TextureVideo&>(*video.Get());
  if (target.texture && width == target.GetWidth() && height == target.GetHeight()) return true;
  SDL_Texture* const made = SDL_CreateTexture(target.renderer, SDL_PIXELFORMAT_BGRA32,
                                              SDL_TEXTUREACCESS_STREAMING, width, height);
  Succeed(made != nullptr);
  SDL_DestroyTexture(std::exchange(target.texture, made));
  target.SetSurface(kBitmapVideoFrame, nullptr, 0, width, height);
  return true;
}
// Locked pixels have an address, and there are no smaller pictures to keep up to date.
void SBitmapCore::Restore() {}
void SBitmapCore::UpdateMipMap(SRECT /*area*/) {}

// The rest of what a host has to define.
VideoDecompressor::VideoDecompressor(CorePlayer* /*player*/, NetStream* /*stream*/) {}
VideoDecompressor::~VideoDecompressor() = default;
void VideoDecompressor::AddRef() {
  ++fRefCount;
}
void VideoDecompressor::DeleteBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::ReallocBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}
void VideoDecompressor::DeleteHWCodec(Vorn::GCAPI::GCRef<SObject> /*video*/) {}

// The messages of a file, or of standard input as they come; all are kept, for going back. Never
// waits, as a window wants looking after; there is no good way to end a thread that does.
class MessageInput {
 public:
  explicit MessageInput(const std::string& file)
      : fName(file == "-" ? "standard input" : file.substr(file.rfind('/') + 1)),
        fFile{file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY), POLLIN, 0} {
    if (fFile.fd < 0) throw std::system_error(errno, std::generic_category(), file);
  }

  const std::string& Name() const { return fName; }
  bool IsOpen() const { return fOpen; }  // more may come
  std::size_t Count() const { return fOffsets.size() - 1; }

  // Counted from 0; valid until the next `Read`.
  std::span<unsigned char> Message(std::size_t index) {
    const std::size_t begin = fOffsets[index] + kLengthBytes;
    return std::span(fBytes).subspan(begin, fOffsets[index + 1] - begin);
  }

  // Takes in some of what is there to be read; false when that is nothing.
  bool Read() {
    if (!fOpen || poll(&fFile, 1, 0) < 1) return false;
    unsigned char bytes[256 * 1024];
    const ssize_t count = read(fFile.fd, bytes, sizeof(bytes));
    if (count <= 0) End(count < 0 ? std::generic_category().message(errno) : "");
    fBytes.insert(fBytes.end(), bytes, bytes + std::max<ssize_t>(count, 0));
    while (fBytes.size() >= fOffsets.back() + kLengthBytes) {
      const unsigned char* at = &fBytes[fOffsets.back()];
      const auto size = static_cast<std::size_t>(at[0] << 16 | at[1] << 8 | at[2]);
      if (fBytes.size() - fOffsets.back() - kLengthBytes < size) break;
      fOffsets.push_back(fOffsets.back() + kLengthBytes + size);
    }
    return count > 0;
  }

 private:
  // What is wrong is told, and ends the program only when there is nothing to show.
  void End(std::string fault) {
    fOpen = false;
    const bool isCut = fBytes.size() != fOffsets.back();
    if (fault.empty() && isCut) fault = "ends within message " + std::to_string(Count() + 1);
    if (Count() == 0)
      throw std::runtime_error(fName + ": " + (fault.empty() ? "no message" : fault));
    if (!fault.empty()) std::fprintf(stderr, "%s: %s\n", fName.c_str(), fault.c_str());
  }

  static constexpr std::size_t kLengthBytes = 3;  // before each message, most significant first
  std::string fName;
  pollfd fFile;
  bool fOpen = true;
  std::vector<unsigned char> fBytes;
  std::vector<std::size_t> fOffsets = {0};  // of each message with its length, and of the next
};

// The window with its keys. Messages count from 1 here; 0 is before the first.
class Player {
 public:
  static constexpr int kMaxFps = 240;
  Player(const std::string& file, int fps) : fInput(file), fFps(fps) {
    std::atexit(SDL_Quit);
    Succeed(SDL_Init(SDL_INIT_VIDEO) == 0);
    // What SDL takes when there is no other shows nothing, and hears no keys.
    const bool isHidden = std::string(SDL_GetCurrentVideoDriver()) == "offscreen";
    if (isHidden && !SDL_getenv("SDL_VIDEODRIVER"))
      throw std::runtime_error("no screen to play on");
    SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "linear");
    Succeed(SDL_CreateWindowAndRenderer(640, 360, SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE,
                                        &fWindow, &fVideo.renderer) == 0);
  }

  void Run() {
    while (fRunning) {
      const bool reads = fInput.Read();
      Play();
      DecodeSlice();
      if (fStale && IsThere()) Draw();
      ShowTitle();
      if (fSized || !reads) SDL_ShowWindow(fWindow);
      HandleEvents(reads || !IsThere());
    }
  }

 private:
  static double Now() { return static_cast<double>(SDL_GetTicks64()); }  // milliseconds
  bool IsThere() const { return fDecoded == std::min(fWanted, fInput.Count()); }
  bool IsAtLast() const { return fWanted >= fInput.Count(); }

  void Seek(std::size_t message) {
    fWanted = std::clamp<std::size_t>(message, 1, std::max<std::size_t>(fInput.Count(), 1));
  }

  void Play() {
    if (!fPlaying || !IsThere() || Now() < fDueMs) return;
    if (IsAtLast()) fPlaying = fInput.IsOpen();
    Seek(fWanted + 1);
    fDueMs = std::max(fDueMs + 1000.0 / fFps, Now());
  }

  // Towards the wanted message for some milliseconds, then it is time to look for events. Draws
  // what is on the way, too: when all that follow fail, it is what there is to show.
  void DecodeSlice() {
    for (const double end = Now() + 15; !IsThere() && Now() < end; fStale = true) {
      if (fDecoder == nullptr || fDecoded > fWanted) Restart();
      if (!Decode(fInput.Message(fDecoded++))) ++fFailed;
    }
  }

  bool Decode(std::span<unsigned char> message) try {
    const Vorn::GCAPI::GCRef<SObject> video(&fVideo);
    return fDecoder->DecompressVideoEmbedded(video, message.data(),
                                             static_cast<int>(message.size()));
  } catch (const std::exception& fault) {  // no memory, or no texture of that size
    std::fprintf(stderr, "message %zu: %s\n", fDecoded, fault.what());
    return false;
  }

  // The way back leads through the first message: a decoder keeps all that it decoded, and key
  // frames need not send every block.
  void Restart() {
    fDecoder.reset(new ZLibVideoDecompressor(nullptr, nullptr),
                   [](VideoDecompressor* decoder) { decoder->DecRef(); });
    SDL_DestroyTexture(std::exchange(fVideo.texture, nullptr));
    fDecoded = fFailed = 0;
  }

  // Fitted into the window, with its aspect kept.
  void Draw() {
    if (!fSized && fVideo.texture) SizeWindow();
    SDL_RenderClear(fVideo.renderer);
    SDL_RenderSetLogicalSize(fVideo.renderer, fVideo.GetWidth(), fVideo.GetHeight());
    if (fVideo.texture) SDL_RenderCopy(fVideo.renderer, fVideo.texture, nullptr, nullptr);
    SDL_RenderPresent(fVideo.renderer);
    fStale = false;
  }

  // As large as the first picture, where the screen has room for that and a frame.
  void SizeWindow() {
    fSized = true;
    SDL_Rect room;
    if (SDL_GetDisplayUsableBounds(SDL_GetWindowDisplayIndex(fWindow), &room) != 0) return;
    const double scale =
        std::min({1.0, (room.w - 48.0) / fVideo.GetWidth(), (room.h - 48.0) / fVideo.GetHeight()});
    SDL_SetWindowSize(fWindow, static_cast<int>(fVideo.GetWidth() * scale),
                      static_cast<int>(fVideo.GetHeight() * scale));
    SDL_SetWindowPosition(fWindow, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
  }

  void ShowTitle() {
    const char* const playing = IsAtLast() && fInput.IsOpen() ? "waiting" : "playing";
    char title[512];
    std::snprintf(title, sizeof(title), "%s – message %zu of %zu, %zu failed, %d fps, %s",
                  fInput.Name().c_str(), fDecoded, fInput.Count(), fFailed, fFps,
                  fPlaying ? playing : "paused");
    if (std::string(title) != SDL_GetWindowTitle(fWindow)) SDL_SetWindowTitle(fWindow, title);
  }

  // Waits for one, unless busy, until there is something else to do; an input has to be asked.
  void HandleEvents(bool isBusy) {
    const double untilDue = fPlaying ? std::max(fDueMs - Now(), 0.0) : 1e6;
    const double mostMs = isBusy ? 0.0 : fInput.IsOpen() ? 10.0 : untilDue;
    const int waitMs = static_cast<int>(std::min(untilDue, mostMs));
    SDL_Event event;
    for (int got = SDL_WaitEventTimeout(&event, waitMs); got; got = SDL_PollEvent(&event)) {
      if (event.type == SDL_QUIT) fRunning = false;
      if (event.type == SDL_KEYDOWN) HandleKey(event.key.keysym.sym);
      if (event.type == SDL_WINDOWEVENT) fStale = true;      // uncovered, or of another size
      if (event.type == SDL_RENDER_DEVICE_RESET) Restart();  // the texture is lost
    }
  }

  void HandleKey(SDL_Keycode key) {
    if (key == SDLK_SPACE) TogglePlaying();
    if (key == SDLK_RIGHT || key == SDLK_LEFT) fPlaying = false;
    if (key == SDLK_RIGHT) Seek(fWanted + 1);
    if (key == SDLK_LEFT) Seek(fWanted - 1);
    if (key == SDLK_HOME) Seek(1);
    if (key == SDLK_END) Seek(fInput.Count());
    const bool isPlus = key == SDLK_PLUS || key == SDLK_EQUALS;  // the latter with Shift
    if (isPlus || key == SDLK_KP_PLUS) fFps = std::min(fFps * 2, kMaxFps);
    if (key == SDLK_MINUS || key == SDLK_KP_MINUS) fFps = std::max(fFps / 2, 1);
    if (key == SDLK_q || key == SDLK_ESCAPE) fRunning = false;
  }

  // At the end of what will not go on, plays it again.
  void TogglePlaying() {
    fPlaying = !fPlaying;
    fDueMs = Now() + 1000.0 / fFps;
    if (fPlaying && IsAtLast() && !fInput.IsOpen()) Seek(1);
  }

  MessageInput fInput;
  SDL_Window* fWindow = nullptr;  // hidden until it has its size
  TextureVideo fVideo;
  std::shared_ptr<VideoDecompressor> fDecoder;
  int fFps;
  std::size_t fWanted = 1;
  std::size_t fDecoded = 0;  // the last message that was
  std::size_t fFailed = 0;   // of those up to there
  double fDueMs = 0;         // when playing goes on to the next message
  bool fPlaying = true;
  bool fStale = true;   // the window does not show what it should
  bool fSized = false;  // the window was sized for a picture
  bool fRunning = true;
};

constexpr char kUsage[] =
    "usage: example_player [--fps N] FILE.zvm\n"
    "FILE.zvm may be \"-\": standard input, shown as it comes. N is 1 to 240, by default 10.\n"
    "Space plays and pauses; Right and Left step; Home and End jump to the first and the last\n"
    "message; + and - double and halve the speed; Q and Escape quit.\n";

int main(int argc, char** argv) try {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() == 1 && words[0] == "--help") return std::fputs(kUsage, stdout) < 0;
  const bool hasFps = words.size() == 3 && words[0] == "--fps";
  const std::string rate = hasFps ? words[1] : "10";
  const int fps = std::atoi(rate.c_str());
  const bool isFps = rate == std::to_string(fps) && fps >= 1 && fps <= Player::kMaxFps;
  if (!isFps || words.size() != (hasFps ? 3 : 1)) {
    std::fputs(kUsage, stderr);
    return 1;
  }
  Player(words.back(), fps).Run();
} catch (const std::exception& fault) {
  std::fprintf(stderr, "example_player: %s\n", fault.what());
  return 1;
}
