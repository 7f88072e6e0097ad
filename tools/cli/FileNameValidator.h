#ifndef ZLIBVIDEO_TOOLS_CLI_FILENAMEVALIDATOR_H
#define ZLIBVIDEO_TOOLS_CLI_FILENAMEVALIDATOR_H

namespace CLI {
class Validator;
}

namespace zlibvideo {

/// Refuses an empty file name, as a script passes for an unset variable. Without the check it would
/// count as no name at all.
CLI::Validator FileNameValidator();

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_CLI_FILENAMEVALIDATOR_H
