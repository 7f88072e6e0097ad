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

/// Refuses an empty file name, which a script passes for an unset variable. Without the check, it
/// counts as a missing name.
CLI::Validator FileNameValidator();

inline constexpr std::uint64_t kNoMaximum = std::numeric_limits<std::uint64_t>::max();

/// Accepts whole numbers from `min` to `max`, both included, in decimal digits. Refuses a leading
/// zero: the library would read octal digits.
CLI::Validator RangeValidator(std::uint64_t min, std::uint64_t max = kNoMaximum);

/// Adds `-j`, the number of threads that do `work`, to the options of `command`. Sets `jobs`, which
/// must outlive the command, to the number of processors, the default.
void AddJobsOption(CLI::App* command, const std::string& work, unsigned int* jobs);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_TERMINAL_OPTIONS_H
