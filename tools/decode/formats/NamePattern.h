#ifndef ZLIBVIDEO_TOOLS_DECODE_FORMATS_NAMEPATTERN_H
#define ZLIBVIDEO_TOOLS_DECODE_FORMATS_NAMEPATTERN_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace zlibvideo {

/// File names with a number, such as "out/%04d.png". %d is the number. %5d and %05d fill it with
/// blanks or zeros to a width of up to two digits. %% is a percent sign.
class NamePattern {
 public:
  /// Reads `text`. A text without a number is a pattern for a single file. Returns false, and
  /// leaves `pattern` as it was, when `text` has any other percent sign or two numbers.
  [[nodiscard]] static bool Parse(const std::string& text, NamePattern* pattern);
  /// The rule that such a text breaks, for people.
  static constexpr const char* kRule =
      "may have a single number, as %d, %4d or %04d, and percent signs as %%";

  bool HasNumber() const { return fHasNumber; }
  /// The name of file `number`. A number longer than the width is written in full.
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
