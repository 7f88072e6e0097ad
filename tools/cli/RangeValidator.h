#ifndef ZLIBVIDEO_TOOLS_CLI_RANGEVALIDATOR_H
#define ZLIBVIDEO_TOOLS_CLI_RANGEVALIDATOR_H

#include <cstdint>
#include <limits>

namespace CLI {
class Validator;
}

namespace zlibvideo {

inline constexpr std::uint64_t kNoMaximum = std::numeric_limits<std::uint64_t>::max();

/// Accepts whole numbers from `min` to `max`, both included, in decimal digits alone. A leading
/// zero is refused: the library would read octal digits.
CLI::Validator RangeValidator(std::uint64_t min, std::uint64_t max = kNoMaximum);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_RANGEVALIDATOR_H
