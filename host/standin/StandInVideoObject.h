#ifndef ZLIBVIDEO_HOST_STANDIN_STANDINVIDEOOBJECT_H
#define ZLIBVIDEO_HOST_STANDIN_STANDINVIDEOOBJECT_H

#include "../GCRef.h"
#include "../RenderRecord.h"
#include "../SObject.h"
#include "StandInBitmap.h"

/// The stand-in host's video object. It owns its bitmap. The stand-in host casts every video object
/// that it is handed to this class, so a program that links it passes no other.
class StandInVideoObject : public SObject {
 public:
  StandInVideoObject() {
    fRecord.fBitmap = &fBitmap;
    SetRenderRecord(&fRecord, kVisible);
  }

  StandInBitmap& Bitmap() { return fBitmap; }
  /// For a call of the decoder. Valid while this object lives.
  Vorn::GCAPI::GCRef<SObject> Ref() { return Vorn::GCAPI::GCRef<SObject>(this); }

 private:
  /// The stand-in host's meaning of the pointer's flag bit.
  static constexpr bool kVisible = true;

  StandInBitmap fBitmap;
  RenderRecord fRecord;
};

#endif  // ZLIBVIDEO_HOST_STANDIN_STANDINVIDEOOBJECT_H
