#include "tools/files/ByteInput.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "tools/files/ToolError.h"

namespace zlibvideo {

ByteInput::ByteInput(const std::string& path) : ByteInput(OpenInput(path), InputName(path)) {}

ByteInput::ByteInput(InputFile file, std::string name)
    : fFile(std::move(file)), fName(std::move(name)), fBuffer(kBufferBytes) {}

const EndSignals* ByteInput::EndedBy() const {
  return fEnded && HasSignal() ? fSignals.get() : nullptr;
}

void ByteInput::CheckError() const {
  if (fError != 0) throw ToolError::FromSystem(fName, "cannot be read", fError);
}

bool ByteInput::StartsWith(std::string_view text) {
  return Peek(text.size()) >= text.size() &&
         std::memcmp(&fBuffer[fBegin], text.data(), text.size()) == 0;
}

std::size_t ByteInput::Read(unsigned char* target, std::size_t size) {
  const std::size_t buffered = std::min(size, fEnd - fBegin);
  std::copy_n(fBuffer.begin() + static_cast<std::ptrdiff_t>(fBegin), buffered, target);
  fBegin += buffered;
  std::size_t done = buffered;
  // Many bytes need not go through the buffer.
  while (size - done >= kBufferBytes) {
    const std::size_t got = ReadSome(target + done, size - done);
    if (got == 0) return done;
    done += got;
  }
  const std::size_t rest = std::min(size - done, Peek(size - done));
  std::copy_n(fBuffer.begin() + static_cast<std::ptrdiff_t>(fBegin), rest, target + done);
  fBegin += rest;
  return done + rest;
}

std::size_t ByteInput::Read(std::size_t size, std::vector<unsigned char>* bytes) {
  std::size_t done = 0;
  while (done < size) {
    const std::size_t step = std::min(size - done, std::max(done, kBufferBytes));
    if (bytes->size() < done + step) bytes->resize(done + step);
    const std::size_t got = Read(bytes->data() + done, step);
    done += got;
    if (got < step) break;
  }
  bytes->resize(done);
  return done;
}

bool ByteInput::ReadLine(std::size_t limit, std::string* line) {
  line->clear();
  while (line->size() < limit && HasMore()) {
    const auto c = static_cast<char>(fBuffer[fBegin++]);
    if (c == '\n') return true;
    *line += c;
  }
  return false;
}

std::size_t ByteInput::Peek(std::size_t size) {
  while (fEnd - fBegin < size) {
    std::copy(fBuffer.begin() + static_cast<std::ptrdiff_t>(fBegin),
              fBuffer.begin() + static_cast<std::ptrdiff_t>(fEnd), fBuffer.begin());
    fEnd -= fBegin;
    fBegin = 0;
    const std::size_t got = ReadSome(&fBuffer[fEnd], fBuffer.size() - fEnd);
    if (got == 0) break;
    fEnd += got;
  }
  return fEnd - fBegin;
}

std::size_t ByteInput::ReadSome(unsigned char* target, std::size_t size) {
  while (!fEnded) {
    if (!Wait()) continue;
    if (HasSignal()) break;
    const ssize_t got = read(fileno(fFile.get()), target, size);
    if (got > 0) return static_cast<std::size_t>(got);
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    fError = got < 0 ? errno : 0;
    break;
  }
  fEnded = true;
  return 0;
}

bool ByteInput::Wait() const {
  // A signal between a look whether it has come and the call would be missed by the call, were it
  // not for its descriptor. A negative one is no descriptor.
  const int signals = fSignals != nullptr ? fSignals->Descriptor() : -1;
  pollfd waited[] = {{fileno(fFile.get()), POLLIN, 0}, {signals, POLLIN, 0}};
  return poll(waited, std::size(waited), -1) > 0;
}

}  // namespace zlibvideo
