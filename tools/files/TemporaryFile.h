#ifndef ZLIBVIDEO_TOOLS_FILES_TEMPORARYFILE_H
#define ZLIBVIDEO_TOOLS_FILES_TEMPORARYFILE_H

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace zlibvideo {

/// Has SIGINT, SIGTERM, SIGHUP, SIGQUIT and SIGXCPU remove the temporary file, if there is one, and
/// then end the process as they would have (130, 143, 129, 131 and 152 to a shell), and turns
/// writing to a closed pipe or beyond the limit of a file's size into an error of the write. To be
/// called once, by `main`.
void InstallSignalHandlers();

/// A file that is removed when the object goes or a signal ends the process, unless it was renamed
/// before. There may be one at a time.
class TemporaryFile {
 public:
  /// Creates it in `folder`.
  TemporaryFile(const std::string& folder, mode_t mode);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// For the user to write to and to close; null, with `errno`, when it could not be created.
  std::FILE* Stream() const { return fStream; }
  /// Cuts it to `size` bytes. False, with `errno`, when it cannot.
  [[nodiscard]] bool Truncate(std::uint64_t size);
  /// Gives it its final name, in place of what has that name. False, with `errno`, when it cannot.
  [[nodiscard]] bool Rename(const std::string& target);
  /// Leaves it where it is, whatever comes; its path.
  const std::string& Keep();

 private:
  std::string fPath;
  std::FILE* fStream = nullptr;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_TEMPORARYFILE_H
