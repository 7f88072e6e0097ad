#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_NAMEPATTERN_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_NAMEPATTERN_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace zlibvideo {

/// File names with a number in them, such as "out/%04d.png". The number is written %d, or %5d or
/// %05d for a width, up to two digits, that is filled with blanks or zeros; %% is a percent sign.
class NamePattern {
 public:
  /// False when `text` has any other percent sign or more than one number; `problem` then says
  /// what is wrong and `pattern` is as before. A text without a number is a pattern for one file.
  [[nodiscard]] static bool Parse(const std::string& text, NamePattern* pattern,
                                  std::string* problem);

  bool HasNumber() const { return fHasNumber; }
  /// The name of file `number`. A number wider than the width is written whole.
  std::string Name(std::uint64_t number) const;

 private:
  std::string fBefore;
  std::string fAfter;
  bool fHasNumber = false;
  char fFill = ' ';
  std::size_t fWidth = 0;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_DECODE_FORMATS_NAMEPATTERN_H
