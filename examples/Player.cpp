// A host with a window: the decoder draws into a texture of SDL's, whose pixels are only there
// while they are locked. What the decoder calls is in player/TextureVideo.cpp, what calls it in
// player/Playback.cpp.
//
//   example_player samples/desktop.zvm        (--help says which keys)

#include <charconv>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "examples/player/PlayerWindow.h"

namespace {

constexpr char kUsage[] =
    "usage: example_player [--fps N] FILE.zvm\n"
    "FILE.zvm may be \"-\": standard input, shown as it comes. N is 1 to 240, by default 10.\n"
    "Space plays and pauses; Right and Left step; Home and End jump to the first and the last\n"
    "message; + and - double and halve the speed; Q and Escape quit.\n";

struct Arguments {
  std::string file;
  int fps = 10;
};

bool ParseFps(std::string_view word, int* fps) {
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, *fps);
  return error == std::errc() && stop == end && *fps >= PlayerWindow::kMinFps &&
         *fps <= PlayerWindow::kMaxFps;
}

std::optional<Arguments> Parse(std::span<char* const> words) {
  Arguments arguments;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (word == "--fps" && i + 1 < words.size()) {
      if (!ParseFps(words[++i], &arguments.fps)) return std::nullopt;
    } else if (arguments.file.empty() && (word == "-" || !word.starts_with('-'))) {
      arguments.file = word;
    } else {
      return std::nullopt;
    }
  }
  if (arguments.file.empty()) return std::nullopt;
  return arguments;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--help") return std::fputs(kUsage, stdout) < 0;
  const auto arguments = Parse(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
  if (!arguments) {
    std::fputs(kUsage, stderr);
    return 1;
  }
  try {
    PlayerWindow(arguments->file, arguments->fps).Run();
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "example_player: %s\n", fault.what());
    return 1;
  }
  return 0;
}
