#include "tools/files/InputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "tools/files/StopSignal.h"
#include "tools/files/ToolError.h"

namespace zlibvideo {
std::string InputName(const std::string& path) {
  return path == kStandardStreamName ? "standard input" : path;
}

InputFile::Descriptor::~Descriptor() {
  if (number >= 0) close(number);
}

InputFile::InputFile(const std::string& path) : fName(InputName(path)), fBuffer(kBufferBytes) {
  const bool isStandard = path == kStandardStreamName;
  fDescriptor.number = isStandard ? dup(STDIN_FILENO) : open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat info = {};
  if (fDescriptor.number < 0 || fstat(fDescriptor.number, &info) != 0) {
    ThrowSystemError(fName, "cannot be opened", errno);
  }
  if (S_ISDIR(info.st_mode)) throw ToolError(fName + ": is a directory, not a file");
  if (S_ISREG(info.st_mode)) fStart = lseek(fDescriptor.number, 0, SEEK_CUR);
}

std::optional<std::uint64_t> InputFile::Size() const {
  struct stat info = {};
  if (fstat(fDescriptor.number, &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  return static_cast<std::uint64_t>(info.st_size);
}

void InputFile::GoTo(std::uint64_t offset) {
  fBegin = fEnd = 0;
  fEnded = lseek(fDescriptor.number, fStart + static_cast<off_t>(offset), SEEK_SET) < 0;
  fError = fEnded ? errno : 0;
}

void InputFile::CheckError() const {
  if (fStopped && !fSignalIsEnd) throw StoppedBySignal();
  if (fError != 0) ThrowSystemError(fName, "cannot be read", fError);
}

bool InputFile::IsReady() const {
  pollfd input = {fDescriptor.number, POLLIN, 0};
  return fBegin < fEnd || fEnded || poll(&input, 1, 0) != 0;
}

bool InputFile::StartsWith(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (Peek(i + 1) <= i) return false;
    if (fBuffer[fBegin + i] != static_cast<unsigned char>(text[i])) return false;
  }
  return true;
}

std::size_t InputFile::Read(unsigned char* target, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const std::size_t part = std::min(size - done, Peek(1));
    if (part == 0) break;
    std::copy_n(fBuffer.data() + fBegin, part, target + done);
    fBegin += part;
    done += part;
  }
  return done;
}

std::size_t InputFile::Read(std::size_t size, std::vector<unsigned char>* bytes) {
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

bool InputFile::ReadLine(std::size_t limit, std::string* line) {
  line->clear();
  while (line->size() < limit && HasMore()) {
    const auto c = static_cast<char>(fBuffer[fBegin++]);
    if (c == '\n') return true;
    *line += c;
  }
  return false;
}

std::size_t InputFile::Peek(std::size_t size) {
  while (fEnd - fBegin < size) {
    std::copy(fBuffer.data() + fBegin, fBuffer.data() + fEnd, fBuffer.data());
    fEnd -= fBegin;
    fBegin = 0;
    const std::size_t got = ReadSome(fBuffer.data() + fEnd, fBuffer.size() - fEnd);
    if (got == 0) break;
    fEnd += got;
  }
  return fEnd - fBegin;
}

std::size_t InputFile::ReadSome(unsigned char* target, std::size_t size) {
  pollfd input = {fDescriptor.number, POLLIN, 0};
  while (!fEnded) {
    if (StopSignal() != 0) {
      fStopped = fEnded = true;
      break;
    }
    if (poll(&input, 1, kWaitMilliseconds) <= 0) continue;
    const ssize_t got = read(fDescriptor.number, target, size);
    if (got > 0) return static_cast<std::size_t>(got);
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    fError = got < 0 ? errno : 0;
    fEnded = true;
  }
  return 0;
}

}  // namespace zlibvideo
