#ifndef ZLIBVIDEO_TOOLS_TERMINAL_OPTIONS_H
#define ZLIBVIDEO_TOOLS_TERMINAL_OPTIONS_H

#include <cstdint>
#include <limits>
#include <string>

namespace CLI {
class App;
class Validator;
}  // namespace CLI

namespace zlibvideo {

/// Refuses an empty file name, as a script passes for an unset variable. Without the check it would
/// count as no name at all.
CLI::Validator FileNameValidator();

inline constexpr std::uint64_t kNoMaximum = std::numeric_limits<std::uint64_t>::max();

/// Accepts whole numbers from `min` to `max`, both included, in decimal digits alone. A leading
/// zero is refused: the library would read octal digits.
CLI::Validator RangeValidator(std::uint64_t min, std::uint64_t max = kNoMaximum);

/// Adds `-j`, how many threads do `work`, to the options of `command`. `jobs` is set to the number
/// of processors, which holds unless the option is given, and must outlive the command.
void AddJobsOption(CLI::App* command, const std::string& work, unsigned int* jobs);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_OPTIONS_H
