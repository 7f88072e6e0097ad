#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "bitstream/FrameHeader.h"
#include "tools/files/InputFile.h"
#include "tools/files/OutputFile.h"
#include "tools/info/ReportWriter.h"

namespace zlibvideo {
namespace {

using Json = nlohmann::ordered_json;

Json HeaderValue(const MessageReport& report, int FrameHeader::*field) {
  return report.outline.header ? Json((*report.outline.header).*field) : Json();
}

Json HeaderSize(const MessageReport& report, int FrameHeader::*width, int FrameHeader::*height) {
  if (!report.outline.header) return {};
  return {{"width", (*report.outline.header).*width}, {"height", (*report.outline.header).*height}};
}

Json GridSize(const MessageReport& report) {
  if (!report.HasGrid()) return {};
  return {{"columns", report.outline.gridWidth}, {"rows", report.outline.gridHeight}};
}

Json Records(const RecordTallies& tallies) {
  Json records = Json::object();
  for (const RecordKind& kind : kRecordKinds) {
    const RecordTally& tally = tallies[kind.Index()];
    records[kind.Name()] = {{"count", tally.count}, {"bytes", tally.bytes}};
  }
  return records;
}

Json FailureObject(const std::optional<Failure>& failure) {
  if (!failure) return {};
  Json object = {{"what", failure->what},
                 {"offset", failure->offset},
                 {"pass", nullptr},
                 {"row", nullptr},
                 {"column", nullptr}};
  if (failure->block) {
    object["pass"] = failure->block->pass;
    object["row"] = failure->block->row;
    object["column"] = failure->block->column;
  }
  return object;
}

/// The report as JSON lines: one object for each message.
class JsonReport : public ReportWriter {
 public:
  void Write(const MessageReport& report, const FrameView& /*frame*/) override {
    fOutput.Write(MessageJson(report).dump() + "\n");
  }
  void Finish(const StreamSummary& /*summary*/, const std::string& /*problem*/) override {
    fOutput.Commit();
  }

 private:
  OutputFile fOutput{kStandardStreamName};
};

}  // namespace

Json MessageJson(const MessageReport& report) {
  const MessageOutline& outline = report.outline;
  const bool version2 = report.HasGrid() && outline.header->codecType == kCodecTypeVersion2;
  Json object;
  object["index"] = report.index;
  object["offset"] = report.offset;
  object["bytes"] = report.bytes;
  object["decoded"] = report.IsDecoded();
  object["frame_type"] = HeaderValue(report, &FrameHeader::frameType);
  object["key_frame"] = outline.header ? Json(outline.header->IsKeyFrame()) : Json();
  object["codec_type"] = HeaderValue(report, &FrameHeader::codecType);
  object["picture"] = HeaderSize(report, &FrameHeader::imageWidth, &FrameHeader::imageHeight);
  object["block"] = HeaderSize(report, &FrameHeader::blockWidth, &FrameHeader::blockHeight);
  object["grid"] = GridSize(report);
  object["flags"] = version2 ? Json(outline.flags) : Json();
  object["palette"] = NameOf(report.palette);
  object["palette_bytes"] = outline.paletteSize ? Json(*outline.paletteSize) : Json();
  object["passes"] = outline.passes;
  object["changed_blocks"] = report.changedBlocks;
  object["records"] = Records(report.tallies);
  object["unread_bytes"] = outline.unread;
  object["failure"] = FailureObject(report.failure);
  return object;
}

std::unique_ptr<ReportWriter> MakeJsonReport() {
  return std::make_unique<JsonReport>();
}

}  // namespace zlibvideo
