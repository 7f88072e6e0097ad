#ifndef ZLIBVIDEO_TOOLS_COMMON_RANGEVALIDATOR_H
#define ZLIBVIDEO_TOOLS_COMMON_RANGEVALIDATOR_H

namespace CLI {
class Validator;
}

namespace zlibvideo {

/// Accepts whole numbers from `min` to `max`, both included, in decimal digits alone. A leading
/// zero is refused: the library would read octal digits.
CLI::Validator RangeValidator(unsigned int min, unsigned int max);

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_COMMON_RANGEVALIDATOR_H
