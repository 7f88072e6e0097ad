#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "grid/BlockFormat.h"
#include "tools/files/OutputFile.h"
#include "tools/info/PicturePatches.h"
#include "tools/info/ReportPage.h"
#include "tools/info/ReportWriter.h"

namespace zlibvideo {
namespace {

using Json = nlohmann::ordered_json;

/// JSON that may stand in a script element: nothing in it can end the element.
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

/// The parts of the page before and after a mark in it.
struct CutPage {
  std::string_view before;
  std::string_view after;

  static CutPage At(std::string_view page, std::string_view mark) {
    const std::size_t place = page.find(mark);
    return {page.substr(0, place), page.substr(place + mark.size())};
  }
};

const CutPage kAtStream = CutPage::At(kReportPage, "{{STREAM}}");
const CutPage kAtMessages = CutPage::At(kAtStream.after, "{{MESSAGES}}");
const CutPage kAtProblem = CutPage::At(kAtMessages.after, "{{PROBLEM}}");

Json StreamObject(const std::string& name) {
  Json kinds = Json::array();
  for (const RecordKind& kind : kRecordKinds) {
    kinds.push_back({{"name", kind.Name()},
                     {"form", NameOf(kind.form)},
                     {"reduced", kind.reduced},
                     {"label", kind.Label()},
                     {"letter", std::string(1, kind.Letter())}});
  }
  return {{"name", std::filesystem::path(name).filename().string()}, {"kinds", kinds}};
}

Json Cells(const MessageReport& report) {
  Json cells = Json::array();
  for (std::size_t index = 0; index < report.decodedRecords; ++index) {
    const MessageOutline::Record& entry = report.outline.records[index];
    if (entry.record.IsEmpty()) continue;
    const RecordKind kind = RecordKind::Of(entry.record, report.outline.header->codecType);
    Json cell = {report.CellIndex(entry.place), kind.Index(), entry.Bytes(), entry.place.pass};
    if (HasBand(entry.record.header.format)) {
      cell.push_back(entry.record.header.diffRowStart);
      cell.push_back(entry.record.header.diffRowCount);
    }
    cells.push_back(std::move(cell));
  }
  return cells;
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

Json PatchObject(const PicturePatches::Patch& patch) {
  return {{"x", patch.x},         {"y", patch.y},
          {"width", patch.width}, {"height", patch.height},
          {"whole", patch.whole}, {"src", "data:image/png;base64," + EncodeBase64(patch.png)}};
}

/// The report as one self-contained web page: the page of `report.html` with the stream's data in
/// three places of it. Each message is the object of `MessageJson` and two keys more:
///
///   cells    for each record that was decoded and is not empty: index of its cell in the grid, of
///            its kind, its bytes, its pass; first row and rows of its band, if it has one
///   patch    how the picture changed: x, y, width, height (pixels from the top left), whole (it
///            needs no patch before it), src (a data URI); null when it did not; "omitted" once
///            the pictures have reached their limit
class HtmlReport : public ReportWriter {
 public:
  HtmlReport(const std::string& path, const std::string& name, std::uint64_t pictureBytes);

  void Write(const MessageReport& report, const FrameView& frame) override;
  void Finish(const StreamSummary& summary, const std::string& problem) override;

 private:
  OutputFile fOutput;
  PicturePatches fPatches;
  bool fFirst = true;
};

HtmlReport::HtmlReport(const std::string& path, const std::string& name, std::uint64_t pictureBytes)
    : fOutput(path), fPatches(pictureBytes) {
  fOutput.Write(kAtStream.before.data(), kAtStream.before.size());
  fOutput.Write(ForScript(StreamObject(name)));
  fOutput.Write(kAtMessages.before.data(), kAtMessages.before.size());
}

void HtmlReport::Write(const MessageReport& report, const FrameView& frame) {
  Json object = MessageJson(report);
  object["cells"] = Cells(report);
  const std::optional<PicturePatches::Patch> patch = fPatches.Next(frame);
  object["patch"] = patch                     ? PatchObject(*patch)
                    : fPatches.LimitReached() ? Json("omitted")
                                              : Json();
  fOutput.Write((fFirst ? "\n" : ",\n") + ForScript(object));
  fFirst = false;
}

void HtmlReport::Finish(const StreamSummary& /*summary*/, const std::string& problem) {
  fOutput.Write(kAtProblem.before.data(), kAtProblem.before.size());
  fOutput.Write(ForScript(Json(problem)));
  fOutput.Write(kAtProblem.after.data(), kAtProblem.after.size());
  fOutput.Commit();
}

}  // namespace

std::unique_ptr<ReportWriter> MakeHtmlReport(const std::string& path, const std::string& name,
                                             std::uint64_t pictureBytes) {
  return std::make_unique<HtmlReport>(path, name, pictureBytes);
}

}  // namespace zlibvideo
