#ifndef ZLIBVIDEO_TOOLS_INFO_TEXTREPORT_H
#define ZLIBVIDEO_TOOLS_INFO_TEXTREPORT_H

#include <optional>
#include <string>

#include "tools/cli/OutputFile.h"
#include "tools/cli/Terminal.h"
#include "tools/info/MessageTable.h"
#include "tools/info/ReportWriter.h"

namespace zlibvideo {

/// The report for people: a table with a line for each message, what is wrong under those that
/// failed, and a summary.
class TextReport : public ReportWriter {
 public:
  struct Options {
    Terminal terminal;
    /// Under each message a map of the grid, a letter for each block.
    bool maps = false;
  };

  TextReport(const std::string& path, const Options& options)
      : fOptions(options), fOutput(path), fTable(options.terminal) {}

  void Write(const MessageReport& report, const FrameView& frame) override;
  void Finish(const StreamSummary& summary, const std::string& problem) override;

 private:
  void WriteGeometry(const MessageReport& report);
  void WriteHeadings();
  void WriteNotes(const MessageReport& report);
  void WriteMap(const MessageReport& report);
  void WriteRecordTable(const StreamSummary& summary);
  std::string Mark(bool good) const;

  const Options fOptions;
  OutputFile fOutput;
  MessageTable fTable;
  /// As last written; messages that share it follow one another in one table.
  std::optional<FrameHeader> fGeometry;
};

}  // namespace zlibvideo

#endif  // ZLIBVIDEO_TOOLS_INFO_TEXTREPORT_H
