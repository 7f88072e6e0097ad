// Plays a stream in a window. The decoder draws the blocks that changed into plain memory, and the
// changed area is uploaded to a texture. First the input, then the player, and main.
//
//   zlibvideo-play samples/desktop.zvm        (--help lists the keys)

#include <SDL.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <zlibvideo/bitstream/StandaloneFinder.h>
#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <zlibvideo/host/SRECT.h>
#include <zlibvideo/host/standin/StandInVideoObject.h>

static void Succeed(bool success) {
  if (!success) throw std::runtime_error(SDL_GetError());
}

static void Tell(const std::string& fault) {
  std::fprintf(stderr, "zlibvideo-play: %s\n", fault.c_str());
}

// The messages of a file, or of standard input as they come. All are kept, for going back. Never
// waits: the window must answer meanwhile, and a thread that waits for input cannot be ended well.
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

  // Messages count from 0 here. Offsets are in bytes, behind the length.
  std::size_t Offset(std::size_t index) const { return fOffsets[index] + kLengthBytes; }
  // Valid until the next `Read`.
  std::span<unsigned char> Message(std::size_t index) {
    return std::span(fBytes).subspan(Offset(index), fOffsets[index + 1] - Offset(index));
  }

  // The last message, up to this index, from which decoding may begin.
  std::size_t StartFor(std::size_t index) const { return *std::prev(fStarts.upper_bound(index)); }
  void DropStart(std::size_t index) { fStarts.erase(index); }

  // Reads a part of the bytes that are there. False if there are no bytes.
  bool Read() {
    if (!fOpen || poll(&fFile, 1, 0) < 1) return false;
    unsigned char bytes[256 * 1024];
    const ssize_t count = read(fFile.fd, bytes, sizeof(bytes));
    if (count <= 0) End(count < 0 ? std::generic_category().message(errno) : "");
    fBytes.insert(fBytes.end(), bytes, bytes + std::max<ssize_t>(count, 0));
    while (fBytes.size() >= Offset(Count())) {
      const unsigned char* at = &fBytes[fOffsets.back()];
      const auto length = static_cast<unsigned int>(at[0] << 16 | at[1] << 8 | at[2]);
      if (fBytes.size() - Offset(Count()) < length) break;
      if (fFinder.Next(at + kLengthBytes, length)) fStarts.insert(Count());
      fOffsets.push_back(Offset(Count()) + length);
    }
    return count > 0;
  }

 private:
  // Tells a fault, which ends the program only if there is nothing to show.
  void End(std::string fault) {
    fOpen = false;
    const bool isCut = fBytes.size() != fOffsets.back();
    if (fault.empty() && isCut) fault = "ends within message " + std::to_string(Count() + 1);
    if (fault.empty() && Count() == 0) fault = "no message";
    if (Count() == 0) throw std::runtime_error(fName + ": " + fault);
    if (!fault.empty()) Tell(fName + ": " + fault);
  }

  static constexpr std::size_t kLengthBytes = 3;  // before each message, most significant first
  std::string fName;
  pollfd fFile;
  bool fOpen = true;
  std::vector<unsigned char> fBytes;
  std::vector<std::size_t> fOffsets = {0};  // of each message with its length, and of the next
  zlibvideo::StandaloneFinder fFinder{zlibvideo::kStateNone};
  std::set<std::size_t> fStarts = {0};
};

// The window with its keys. Messages count from 1 here. 0 is before the first message.
class Player {
 public:
  static constexpr int kMaxFps = 240;
  static constexpr std::size_t kMostTold = 20;  // failures, of all that the title counts
  Player(const std::string& file, int fps) : fInput(file), fFps(fps) {
    std::atexit(SDL_Quit);
    Succeed(SDL_Init(SDL_INIT_VIDEO) == 0);
    // If there is no screen, SDL chooses this driver, which shows nothing and hears no keys.
    const bool isHidden = std::string(SDL_GetCurrentVideoDriver()) == "offscreen";
    if (isHidden && !SDL_getenv("SDL_VIDEODRIVER"))
      throw std::runtime_error("no screen to play on");
    Succeed(SDL_CreateWindowAndRenderer(640, 360, SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE,
                                        &fWindow, &fRenderer) == 0);
  }

  void Run() {
    while (fRunning) {
      bool reads = fInput.Read();
      for (const double end = Now() + kSliceMs; reads && Now() < end;) reads = fInput.Read();
      Play();
      DecodeSlice();
      if (IsThere()) Upload();
      if (fStale) Draw();
      ShowTitle();
      if (fSized || !reads) SDL_ShowWindow(fWindow);
      HandleEvents(reads || !IsThere());
    }
  }

 private:
  static constexpr double kSliceMs = 15;  // of reading or decoding, then events are due
  static double Now() { return static_cast<double>(SDL_GetTicks64()); }  // milliseconds
  std::size_t Target() const { return std::min(fWanted, fInput.Count()); }
  bool IsThere() const { return fDecoded == Target(); }
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

  // Decodes towards the wanted message.
  void DecodeSlice() {
    for (const double end = Now() + kSliceMs; !IsThere() && Now() < end;) {
      const std::size_t start = fInput.StartFor(Target() - 1);
      if (!fDecoder || fDecoded > Target() || fDecoded < start) BeginWith(start);
      DecodeNext();
    }
  }

  // Begins a new decoder, and without a picture, for all messages from here on may fail.
  void BeginWith(std::size_t start) {
    fDecoder.emplace(nullptr, nullptr);
    fVideo.Bitmap().Resize(0, 0, kBitmapVideoFrame);
    fBegin = fDecoded = start;
  }

  void DecodeNext() {
    const std::size_t index = fDecoded++;
    const std::span<unsigned char> message = fInput.Message(index);
    const bool succeeded =
        fDecoder->DecompressVideo(fVideo.Ref(), message.data(), message.size(), true);
    if (index == fBegin && index > 0 && !(succeeded && fDecoder->IsComplete())) {
      fInput.DropStart(index);  // it leaves gaps, or its payloads are damaged
      fDecoder.reset();
      fDecoded = 0;
    } else if (succeeded) {
      // Drawn even if others follow: they may fail after they have changed blocks.
      AddChanged(fDecoder->PushChanges(&fVideo.Bitmap()));
    } else if (fFailed.insert(index).second && fFailed.size() <= kMostTold) {
      Tell(fInput.Name() + ": message " + std::to_string(index + 1) + " at byte " +
           std::to_string(fInput.Offset(index)) + " cannot be decoded" +
           (fFailed.size() == kMostTold ? "; others are counted in the title" : ""));
    }
  }

  void AddChanged(const SRECT& area) {
    const SDL_Rect more = {area.xMin, area.yMin, area.xMax - area.xMin, area.yMax - area.yMin};
    SDL_UnionRect(&fChanged, &more, &fChanged);
  }

  // The texture is replaced only here: it shows the last picture while others are decoded.
  void Upload() {
    const StandInBitmap& bitmap = fVideo.Bitmap();
    const SDL_Rect whole = {0, 0, bitmap.GetWidth(), bitmap.GetHeight()};
    int width = 0, height = 0;
    SDL_RenderGetLogicalSize(fRenderer, &width, &height);  // that of the texture
    if (width != whole.w || height != whole.h) {
      SDL_DestroyTexture(std::exchange(fTexture, nullptr));
      fTexture = SDL_CreateTexture(fRenderer, SDL_PIXELFORMAT_BGRA32, SDL_TEXTUREACCESS_STATIC,
                                   whole.w, whole.h);
      Succeed(fTexture || SDL_RectEmpty(&whole));
      SDL_RenderSetLogicalSize(fRenderer, whole.w, whole.h);
      fChanged = whole;
      fStale = true;
    }
    // Pictures on the way may have been larger.
    if (!SDL_IntersectRect(&fChanged, &whole, &fChanged)) return;
    const int rowLength = bitmap.GetRowLength();
    const unsigned char* const pixels = bitmap.Pixels().data() + fChanged.y * rowLength;
    Succeed(SDL_UpdateTexture(fTexture, &fChanged, pixels + fChanged.x * 4, rowLength) == 0);
    fChanged = {};
    fStale = true;
  }

  // Fits the picture into the window and keeps its aspect. Large pixels are not smoothed.
  void Draw() {
    if (!fSized && fTexture) SizeWindow();
    float scale = 1;
    SDL_RenderGetScale(fRenderer, &scale, nullptr);
    SDL_SetTextureScaleMode(fTexture, scale < 2 ? SDL_ScaleModeLinear : SDL_ScaleModeNearest);
    SDL_RenderClear(fRenderer);
    SDL_RenderCopy(fRenderer, fTexture, nullptr, nullptr);
    SDL_RenderPresent(fRenderer);
    fStale = false;
  }

  // As large as the first picture, where the screen has room for that and a frame. A small picture
  // is enlarged by a whole factor, and has room for a title.
  void SizeWindow() {
    fSized = true;
    SDL_Rect room;
    if (SDL_GetDisplayUsableBounds(SDL_GetWindowDisplayIndex(fWindow), &room) != 0) return;
    const int width = fVideo.Bitmap().GetWidth(), height = fVideo.Bitmap().GetHeight();
    const double fitted = std::min({1.0, (room.w - 48.0) / width, (room.h - 48.0) / height});
    const double scale = std::max<double>(fitted, std::min(640 / width, 360 / height));
    SDL_SetWindowSize(fWindow, std::max(240, static_cast<int>(width * scale)),
                      std::max(120, static_cast<int>(height * scale)));
    SDL_SetWindowPosition(fWindow, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
  }

  // The number of the message also shows how far a long way of decoding has come.
  void ShowTitle() {
    const char* state = fPlaying ? "playing" : "paused";
    if (fPlaying && IsAtLast() && fInput.IsOpen()) state = "waiting";
    if (fDecoded + static_cast<std::size_t>(fFps) < Target()) state = "decoding";
    char title[512];
    std::snprintf(title, sizeof(title), "%s - message %zu of %zu, %zu failed, %d fps, %s",
                  fInput.Name().c_str(), fDecoded, fInput.Count(), fFailed.size(), fFps, state);
    if (std::string(title) != SDL_GetWindowTitle(fWindow)) SDL_SetWindowTitle(fWindow, title);
  }

  // Waits for an event, unless busy, until the next message is due. An open input is polled.
  void HandleEvents(bool isBusy) {
    const double untilDue = fPlaying ? std::max(fDueMs - Now(), 0.0) : 1e6;
    const double mostMs = isBusy ? 0.0 : fInput.IsOpen() ? 10.0 : untilDue;
    const int waitMs = static_cast<int>(std::min(untilDue, mostMs));
    SDL_Event event;
    for (int got = SDL_WaitEventTimeout(&event, waitMs); got; got = SDL_PollEvent(&event)) {
      if (event.type == SDL_QUIT) fRunning = false;
      if (event.type == SDL_KEYDOWN) HandleKey(event.key.keysym.sym);
      if (event.type == SDL_WINDOWEVENT) fStale = true;  // uncovered, or of another size
      // The texture is lost. For another size a new texture is made.
      if (event.type == SDL_RENDER_DEVICE_RESET) SDL_RenderSetLogicalSize(fRenderer, 0, 0);
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

  // At the end of a file, begins with the first message again.
  void TogglePlaying() {
    fPlaying = !fPlaying;
    fDueMs = Now() + 1000.0 / fFps;
    if (fPlaying && IsAtLast() && !fInput.IsOpen()) Seek(1);
  }

  MessageInput fInput;
  SDL_Window* fWindow = nullptr;  // hidden until it has its size
  SDL_Renderer* fRenderer = nullptr;
  SDL_Texture* fTexture = nullptr;
  StandInVideoObject fVideo;
  SDL_Rect fChanged = {};  // drawn since the last upload
  std::optional<ZLibVideoDecompressor> fDecoder;
  int fFps;
  std::size_t fWanted = 1;
  std::size_t fBegin = 0;         // the messages that the decoder left out
  std::size_t fDecoded = 0;       // the last message that was decoded
  std::set<std::size_t> fFailed;  // messages so far, from 0
  double fDueMs = 0;              // when playing goes on to the next message
  bool fPlaying = true;
  bool fStale = true;   // the window must be drawn
  bool fSized = false;  // the window was sized for a picture
  bool fRunning = true;
};

constexpr char kUsage[] =
    "usage: zlibvideo-play [--fps N] FILE.zvm\n"
    "FILE.zvm may be \"-\": standard input, shown as it comes. N is 1 to 240, by default 10.\n"
    "Space plays and pauses; Right and Left step; Home and End jump to the first and the last\n"
    "message; + and - double and halve the speed; Q and Escape quit.\n";

int main(int argc, char** argv) try {
  // SDL converts the title of the window to the encoding of the locale.
  if (!std::setlocale(LC_CTYPE, "C.UTF-8")) std::setlocale(LC_CTYPE, "");
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
  Tell(fault.what());
  return 1;
}
