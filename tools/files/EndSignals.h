#ifndef ZLIBVIDEO_TOOLS_FILES_ENDSIGNALS_H
#define ZLIBVIDEO_TOOLS_FILES_ENDSIGNALS_H

namespace zlibvideo {

/// While it lives, the first SIGINT, SIGTERM or SIGHUP ends an input rather than the process,
/// unless the signal was ignored before. More of them within half a second count as the same wish:
/// a terminal, `timeout` or a service manager may send several. A later one does what it did
/// before. System calls other than waiting go on. There may be one at a time.
class EndSignals {
 public:
  /// Throws `ToolError` when the system has no descriptors left.
  EndSignals();
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

  /// Whether the first one has come.
  bool HaveCome() const;
  /// Becomes readable, for `poll`, when the first one comes.
  int Descriptor() const;
  /// Has the signal that came do what it did before: as `InstallSignalHandlers` leaves it, that
  /// ends the process. REQUIRES: one has come.
  void Obey() const;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_FILES_ENDSIGNALS_H
