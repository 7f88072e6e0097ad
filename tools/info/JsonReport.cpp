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

/// Null if the message has no whole header.
Json HeaderKeys(const std::optional<FrameHeader>& header) {
  if (!header) {
    return {{"frame_type", nullptr},
            {"key_frame", nullptr},
            {"codec_type", nullptr},
            {"picture", nullptr},
            {"block", nullptr}};
  }
  return {{"frame_type", header->frameType},
          {"key_frame", header->IsKeyFrame()},
          {"codec_type", header->codecType},
          {"picture", {{"width", header->imageWidth}, {"height", header->imageHeight}}},
          {"block", {{"width", header->blockWidth}, {"height", header->blockHeight}}}};
}

Json GridKeys(const MessageReport& report) {
  const MessageOutline& outline = report.outline;
  const bool version2 = report.HasGrid() && outline.header->codecType == kCodecTypeVersion2;
  Json keys = {{"grid", nullptr}, {"flags", nullptr}};
  if (report.HasGrid()) {
    keys["grid"] = {{"columns", outline.gridWidth}, {"rows", outline.gridHeight}};
  }
  if (version2) keys["flags"] = outline.flags;
  keys["palette"] = report.palette;
  keys["palette_bytes"] = outline.paletteSize ? Json(*outline.paletteSize) : Json();
  keys["passes"] = outline.passes;
  return keys;
}

/// Of all kinds, also of kinds that the message does not have.
Json Records(const RecordTallies& tallies) {
  Json records = Json::object();
  for (int i = 0; i < kRecordKinds; ++i) {
    const auto kind = static_cast<RecordKind>(i);
    const auto found = tallies.find(kind);
    const RecordTally tally = found == tallies.end() ? RecordTally() : found->second;
    records[TextOf(kind).name] = {{"count", tally.count}, {"bytes", tally.bytes}};
  }
  return records;
}

Json FailureObject(const std::optional<Failure>& failure) {
  if (!failure) return {};
  Json object = {{"what", failure->what}, {"offset", failure->offset}};
  const std::optional<BlockPlace>& block = failure->block;
  object["pass"] = block ? Json(block->pass) : Json();
  object["row"] = block ? Json(block->row) : Json();
  object["column"] = block ? Json(block->column) : Json();
  return object;
}

class JsonReport : public ReportWriter {
 public:
  void Write(const MessageReport& report, const FrameView& /*frame*/) override {
    Json object = {{"index", report.index},
                   {"offset", report.offset},
                   {"bytes", report.bytes},
                   {"decoded", !report.failure.has_value()}};
    object.update(HeaderKeys(report.outline.header));
    object.update(GridKeys(report));
    object["changed_blocks"] = report.changedBlocks;
    object["records"] = Records(report.tallies);
    object["unread_bytes"] = report.outline.unread;
    object["failure"] = FailureObject(report.failure);
    fOutput.WriteLine(object.dump());
  }
  void WriteHeldBack(const std::string& /*sentence*/) override {}
  void Finish(const StreamSummary& /*summary*/, const std::string& /*problem*/) override {
    fOutput.Commit();
  }

 private:
  OutputFile fOutput{kStandardStreamName};
};

}  // namespace

std::unique_ptr<ReportWriter> MakeJsonReport() {
  return std::make_unique<JsonReport>();
}

}  // namespace zlibvideo
