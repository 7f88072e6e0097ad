#ifndef ZLIBVIDEO_TOOLS_FILES_STOPSIGNAL_H
#define ZLIBVIDEO_TOOLS_FILES_STOPSIGNAL_H

namespace zlibvideo {

/// A wait of the system is that short at most. The signal may come just before the wait, or to
/// another thread: then it interrupts nothing.
inline constexpr int kWaitMilliseconds = 500;

/// Makes the first SIGINT, SIGTERM or SIGHUP set a flag and interrupt the system call that waits. A
/// later SIGINT ends the process at once. A signal that the parent ignores, as nohup does, stays
/// ignored. Also turns writing to a closed pipe, or beyond the limit of a file's size, into an
/// error of the write. `main` calls it once, before any other thread exists.
void InstallSignalHandlers();

/// The signal that has come. 0 before a signal.
int StopSignal();

/// Makes the first signal print `line`, which must outlive the process, to stderr.
void PrintAtStopSignal(const char* line);

/// Ends the process as the signal does by default. Returns if the signal did not come.
void EndByStopSignal();

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_STOPSIGNAL_H
