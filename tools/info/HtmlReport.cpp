#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "grid/BlockFormat.h"
#include "tools/files/OutputFile.h"
#include "tools/info/ReportPage.h"
#include "tools/info/ReportWriter.h"
#include "tools/pictures/Png.h"
#include "tools/stream/Diagnosis.h"
#include "tools/terminal/StandardError.h"
#include "tools/terminal/Wording.h"

namespace zlibvideo {
namespace {

using Json = nlohmann::ordered_json;

/// Stands in the page for the object with the stream's data.
constexpr std::string_view kMark = "{{STREAM}}";

/// JSON for a script element: nothing in it can end the element.
std::string ForScript(const Json& value) {
  std::string text;
  for (const char c : value.dump(-1, ' ', false, Json::error_handler_t::replace)) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

/// Bytes as text (RFC 4648), padded.
std::string EncodeBase64(const std::vector<unsigned char>& bytes) {
  constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  constexpr std::size_t kGroupBytes = 3;
  std::string text;
  text.reserve((bytes.size() + kGroupBytes - 1) / kGroupBytes * 4);
  for (std::size_t start = 0; start < bytes.size(); start += kGroupBytes) {
    const std::size_t count = std::min(kGroupBytes, bytes.size() - start);
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < kGroupBytes; ++i) {
      group = group << 8 | (i < count ? bytes[start + i] : 0U);
    }
    for (std::size_t digit = 0; digit < 4; ++digit) {
      text += digit > count ? '=' : kDigits[group >> (18 - 6 * digit) & 0x3F];
    }
  }
  return text;
}

/// All kinds of records, in their order.
Json Kinds() {
  Json kinds = Json::array();
  for (int i = 0; i < kRecordKinds; ++i) {
    const KindText& text = TextOf(static_cast<RecordKind>(i));
    kinds.push_back(
        {{"name", text.name}, {"label", text.label}, {"letter", std::string(1, text.letter)}});
  }
  return kinds;
}

std::string Summary(const StreamSummary& summary) {
  return Counted(summary.messages - summary.failed, "message") + " decoded" +
         (summary.failed == 0 ? "" : ", " + std::to_string(summary.failed) + " failed") + ". " +
         summary.SizeText() + ".";
}

/// The message in a line, below its number.
std::string Line(const MessageReport& report) {
  if (report.failure) return ExplainFailure(*report.failure);
  const std::string changed =
      std::to_string(report.changedBlocks) + " of " + Counted(report.cells.size(), "block");
  return HumanBytes(report.bytes) + ", " + changed + " changed" +
         (report.outline.header->IsKeyFrame() ? ", key frame" : "");
}

/// Names and values of a table.
Json Fields(const MessageReport& report) {
  const MessageOutline& outline = report.outline;
  Json fields = {{"Position", "byte " + std::to_string(report.offset) + " of the file"},
                 {"Size", Counted(report.bytes, "byte")}};
  if (!outline.header) return fields;
  const FrameHeader& header = *outline.header;
  fields["Frame type"] = std::to_string(header.frameType) + (header.IsKeyFrame() ? ", key" : "");
  fields["Codec"] = CodecName(header.codecType);
  fields["Picture"] = SizeText(header.imageWidth, header.imageHeight) + " pixels";
  if (!report.HasGrid()) return fields;
  fields["Blocks"] = SizeText(outline.gridWidth, outline.gridHeight) + ", " +
                     SizeText(header.blockWidth, header.blockHeight) + " pixels each";
  fields["Changed"] = Counted(report.changedBlocks, "block") + ", " +
                      Percent(report.changedBlocks, report.cells.size());
  if (outline.paletteSize) {
    fields["Palette"] = Counted(*outline.paletteSize, "byte") + ", " + report.palette;
  }
  if (outline.passes > 1) fields["Passes"] = std::to_string(outline.passes);
  if (outline.unread != 0) fields["Not read"] = Counted(outline.unread, "byte") + " at the end";
  return fields;
}

/// For each kind of record: its index, how many there are, their bytes, these bytes in words and in
/// percent of the message.
Json Records(const MessageReport& report) {
  Json records = Json::array();
  for (const auto& [kind, tally] : report.tallies) {
    records.push_back({static_cast<int>(kind), tally.count, tally.bytes, HumanBytes(tally.bytes),
                       Percent(tally.bytes, report.bytes)});
  }
  return records;
}

/// For each decoded record that is not empty: the index of its block in the grid, the index of its
/// kind, its bytes and its band in words.
Json Cells(const MessageReport& report) {
  Json cells = Json::array();
  for (std::size_t i = 0; i < report.decodedRecords; ++i) {
    const MessageOutline::Record& entry = report.outline.records[i];
    if (entry.record.IsEmpty()) continue;
    const BlockHeader& header = entry.record.header;
    std::string text = HumanBytes(entry.Bytes());
    if (HasBand(header.format)) {
      text += ", " + Counted(header.diffRowCount, "row") + " from row " +
              std::to_string(header.diffRowStart);
    }
    const RecordKind kind = KindOf(entry.record, report.outline.header->codecType);
    cells.push_back({report.CellIndex(entry.place), static_cast<int>(kind), text});
  }
  return cells;
}

/// The grid and the changes in it, or null without a grid.
Json Blocks(const MessageReport& report) {
  if (!report.HasGrid()) return {};
  const FrameHeader& header = *report.outline.header;
  Json blocks = {{"width", header.imageWidth},
                 {"height", header.imageHeight},
                 {"blockWidth", header.blockWidth},
                 {"blockHeight", header.blockHeight},
                 {"columns", report.outline.gridWidth},
                 {"cells", Cells(report)},
                 {"failed", nullptr}};
  if (report.failure && report.failure->block) {
    blocks["failed"] = report.CellIndex(*report.failure->block);
  }
  return blocks;
}

/// The page of report.html with the stream's data in it, an entry for each message.
class HtmlReport : public ReportWriter {
 public:
  HtmlReport(const std::string& path, const std::string& name, std::uint64_t pictureBytes);

  void Write(const MessageReport& report, const FrameView& frame) override;
  void WriteHeldBack(const std::string& sentence) override;
  void Finish(const StreamSummary& summary, const std::string& problem) override;

 private:
  void WriteEntry(const Json& entry);
  /// The picture as a data URL. Null if it is the same as before, false from the limit on.
  Json PictureValue(std::uint64_t number, const FrameView& frame);

  OutputFile fOutput;
  bool fHasEntries = false;
  /// Of the message written last.
  std::uint64_t fNumber = 0;
  /// The picture before.
  Picture fPicture;
  const std::uint64_t fPictureLimit;
  std::uint64_t fPictureBytes = 0;
  /// Number of the first message whose picture is left out.
  std::optional<std::uint64_t> fLeftOut;
};

HtmlReport::HtmlReport(const std::string& path, const std::string& name, std::uint64_t pictureBytes)
    : fOutput(path), fPictureLimit(pictureBytes) {
  const std::string fileName = std::filesystem::path(name).filename().string();
  fOutput.Write(std::string(kReportPage.substr(0, kReportPage.find(kMark))));
  fOutput.Write("{\"name\":" + ForScript(fileName) + ",\"kinds\":" + ForScript(Kinds()) +
                ",\"messages\":[");
}

void HtmlReport::Write(const MessageReport& report, const FrameView& frame) {
  const std::optional<FrameHeader>& header = report.outline.header;
  WriteEntry({{"number", report.Number()},
              {"title", "Message " + std::to_string(report.Number())},
              {"line", Line(report)},
              {"decoded", !report.failure.has_value()},
              {"key", header && header->IsKeyFrame()},
              {"bytes", report.bytes},
              {"fields", Fields(report)},
              {"records", Records(report)},
              {"blocks", Blocks(report)},
              {"picture", PictureValue(report.Number(), frame)}});
}

void HtmlReport::WriteHeldBack(const std::string& sentence) {
  WriteEntry({{"number", fNumber + 1},
              {"title", "More failures"},
              {"line", sentence},
              {"decoded", false},
              {"key", false},
              {"bytes", 0},
              {"fields", Json::object()},
              {"records", Json::array()},
              {"blocks", nullptr},
              {"picture", nullptr}});
}

void HtmlReport::WriteEntry(const Json& entry) {
  fOutput.Write((fHasEntries ? ",\n" : "\n") + ForScript(entry));
  fHasEntries = true;
  fNumber = entry["number"];
}

Json HtmlReport::PictureValue(std::uint64_t number, const FrameView& frame) {
  if (fLeftOut) return false;
  Picture picture;
  CopyColours(frame, &picture);
  if (frame.HasSizeOf({nullptr, fPicture.width, fPicture.height}) &&
      picture.pixels == fPicture.pixels) {
    return nullptr;
  }
  const std::vector<unsigned char> png = EncodePng(picture);
  fPictureBytes += png.size();
  if (fPictureBytes > fPictureLimit) {
    fLeftOut = number;
    return false;
  }
  fPicture = std::move(picture);
  return "data:image/png;base64," + EncodeBase64(png);
}

void HtmlReport::Finish(const StreamSummary& summary, const std::string& problem) {
  fOutput.Write("],\"summary\":" + ForScript(Summary(summary)) +
                ",\"problem\":" + ForScript(problem) + "}");
  fOutput.Write(std::string(kReportPage.substr(kReportPage.find(kMark) + kMark.size())));
  fOutput.Commit();
  if (!fLeftOut) return;
  PrintLine(fOutput.Name() + ": pictures from message " + std::to_string(*fLeftOut) +
            " on are left out; a larger --picture-limit has room for more");
}

}  // namespace

std::unique_ptr<ReportWriter> MakeHtmlReport(const std::string& path, const std::string& name,
                                             std::uint64_t pictureBytes) {
  return std::make_unique<HtmlReport>(path, name, pictureBytes);
}

}  // namespace zlibvideo
