#include "examples/player/MessageInput.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <system_error>

namespace {

constexpr std::size_t kReadBytes = 256 * 1024;
constexpr std::size_t kLengthBytes = 3;  // before each message, most significant first

}  // namespace

MessageInput::MessageInput(const std::string& name)
    : fName(name), fFile(name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC)) {
  if (fFile < 0) throw std::system_error(errno, std::generic_category(), name);
}

MessageInput::~MessageInput() {
  close(fFile);
}

std::span<unsigned char> MessageInput::Message(std::size_t index) {
  const Place& place = fMessages[index];
  return std::span(fBytes).subspan(place.offset, place.size);
}

bool MessageInput::Read() {
  pollfd readable = {fFile, POLLIN, 0};
  if (!fOpen || poll(&readable, 1, 0) < 1) return false;
  const std::size_t before = fBytes.size();
  fBytes.resize(before + kReadBytes);
  const ssize_t count = read(fFile, &fBytes[before], kReadBytes);
  const int error = count < 0 ? errno : 0;
  fBytes.resize(before + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  FindMessages();
  if (count <= 0) End(error);
  return count > 0;
}

void MessageInput::FindMessages() {
  while (fBytes.size() - fNext >= kLengthBytes) {
    const unsigned char* length = &fBytes[fNext];
    const std::size_t size = std::size_t{length[0]} << 16 | std::size_t{length[1]} << 8 | length[2];
    const std::size_t offset = fNext + kLengthBytes;
    if (fBytes.size() - offset < size) return;
    fMessages.push_back({offset, size});
    fNext = offset + size;
  }
}

void MessageInput::End(int error) {
  fOpen = false;
  std::string fault;
  if (error != 0) {
    fault = std::generic_category().message(error);
  } else if (fNext != fBytes.size()) {
    fault = "ends within message " + std::to_string(Count() + 1);
  } else if (Count() == 0) {
    fault = "no message in it";
  }
  if (fault.empty()) return;
  if (Count() == 0) throw std::runtime_error(fName + ": " + fault);
  std::fprintf(stderr, "example_player: %s: %s\n", fName.c_str(), fault.c_str());
}
