#ifndef ZLIBVIDEO_TOOLS_FILES_BYTEINPUT_H
#define ZLIBVIDEO_TOOLS_FILES_BYTEINPUT_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/files/EndSignals.h"
#include "tools/files/InputFile.h"

namespace zlibvideo {

/// The bytes of a file or pipe, of which it waits for no more than are asked for. They end with the
/// file, with an error of the system, which `CheckError` throws, or by a signal if that is wanted.
class ByteInput {
 public:
  /// Opens `path`, or standard input for "-". Throws `ToolError` when it cannot be opened.
  explicit ByteInput(const std::string& path);
  /// Takes an open file, from which nothing was read; `name` is for messages.
  ByteInput(InputFile file, std::string name);

  /// As messages show it.
  const std::string& Name() const { return fName; }
  bool IsRegularFile() const { return InputSize(fFile.get()).has_value(); }

  /// From now on `EndSignals` end the input, too.
  void EndAtSignals() { fSignals = std::make_unique<EndSignals>(); }
  /// The signals, if the input was ended by one.
  const EndSignals* EndedBy() const;
  /// Throws `ToolError` when the system could not read.
  void CheckError() const;

  /// Whether there is a byte more.
  bool HasMore() { return Peek(1) > 0; }
  /// Whether the next bytes, which remain to be read, are `text`, of at most 64 KiB.
  bool StartsWith(std::string_view text);
  /// Reads `size` bytes, or fewer when the input ends. How many.
  std::size_t Read(unsigned char* target, std::size_t size);
  /// The same in place of the contents of `bytes`. Room is made for what comes: twice as much at
  /// the most.
  std::size_t Read(std::size_t size, std::vector<unsigned char>* bytes);
  /// Reads through the end of a line, which is not part of `line`. False when the input ends, or
  /// `limit` bytes are read, before that: `line` holds them.
  bool ReadLine(std::size_t limit, std::string* line);

 private:
  static constexpr std::size_t kBufferBytes = 0x10000;

  /// Bytes that are there to be read without waiting: at least `size`, at most a buffer, unless the
  /// input ends.
  std::size_t Peek(std::size_t size);
  /// Waits for bytes and reads as many as are there. 0 when the input ends.
  std::size_t ReadSome(unsigned char* target, std::size_t size);
  /// Waits until there is something to read, or a signal has come; false if for nothing.
  bool Wait() const;
  bool HasSignal() const { return fSignals != nullptr && fSignals->HaveCome(); }

  InputFile fFile;
  std::string fName;
  std::unique_ptr<EndSignals> fSignals;
  bool fEnded = false;
  /// Of the system; 0 for none.
  int fError = 0;
  std::vector<unsigned char> fBuffer;
  /// What of the buffer remains to be read.
  std::size_t fBegin = 0;
  std::size_t fEnd = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_BYTEINPUT_H
