#ifndef ZLIBVIDEO_HOST_SOBJECT_H
#define ZLIBVIDEO_HOST_SOBJECT_H

#include <cstdint>

#include "Export.h"
#include "RenderRecord.h"

/// The host's display object that shows a video (the video object). It holds a tagged pointer to
/// its render record: the lowest bit is a flag of the host's and no part of the address.
class ZLIBVIDEO_EXPORT SObject {
 public:
  SObject() = default;
  SObject(const SObject&) = delete;
  SObject& operator=(const SObject&) = delete;

  /// The bitmap surface that shows the video, owned by the host. Null without a bitmap.
  SBitmapCore* GetBitmapCore() const {
    const RenderRecord* record = GetRenderRecord();
    return record == nullptr ? nullptr : record->fBitmap;
  }

 protected:
  ~SObject() = default;

  /// For the host: the record stays the host's and must outlive its use here.
  void SetRenderRecord(RenderRecord* record, bool flag) {
    fTaggedRenderRecord = reinterpret_cast<std::uintptr_t>(record) | (flag ? kFlagBit : 0);
  }

  RenderRecord* GetRenderRecord() const {
    return reinterpret_cast<RenderRecord*>(fTaggedRenderRecord & ~kFlagBit);
  }

 private:
  static constexpr std::uintptr_t kFlagBit = 1;

  std::uintptr_t fTaggedRenderRecord = 0;
};

#endif  // ZLIBVIDEO_HOST_SOBJECT_H
