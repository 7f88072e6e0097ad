// The stand-in host's share of the decoder base. It has no textures, hardware codecs or frame
// buffers to manage. It counts references and sizes bitmaps.

#include "host/VideoDecompressor.h"
#include "host/standin/StandInVideoObject.h"

VideoDecompressor::VideoDecompressor(CorePlayer* /*player*/, NetStream* /*stream*/) {}

VideoDecompressor::~VideoDecompressor() {
  delete fVideoTexture;
  delete fVideoBuffer;
  delete fGPUCodec;
}

void VideoDecompressor::AddRef() {
  ++fRefCount;
}

void VideoDecompressor::DeleteBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}

void VideoDecompressor::ReallocBuffers(Vorn::GCAPI::GCRef<SObject> /*video*/) {}

void VideoDecompressor::DeleteHWCodec(Vorn::GCAPI::GCRef<SObject> /*video*/) {}

bool VideoDecompressor::ReallocBitmap(Vorn::GCAPI::GCRef<SObject> video, int width, int height,
                                      bool /*flag1*/, bool /*flag2*/, EBitmapType type,
                                      SRECT const* /*area*/, SPOINT const* /*origin*/) {
  static_cast<StandInVideoObject*>(video.Get())->Bitmap().Resize(width, height, type);
  return true;
}
