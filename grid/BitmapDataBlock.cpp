#include "grid/BitmapDataBlock.h"

#include <cstddef>
#include <cstring>

#include "grid/Sizes.h"
#include "host/HostMemory.h"

namespace {

/// Multiplied in 64 bits so that it cannot overflow. The low 32 bits are kept.
std::int32_t BytesOfPixels(std::int32_t pixels) {
  return static_cast<std::int32_t>(std::int64_t{zlibvideo::kBlockPixelBytes} * pixels);
}

}  // namespace

BitmapDataBlock::~BitmapDataBlock() {
  zlibvideo::ReleaseToHost(fRawData);
  zlibvideo::ReleaseToHost(fPreviousData);
  zlibvideo::ReleaseToHost(fConvertedData);
}

void BitmapDataBlock::Initialize(std::int32_t pixelOffset, std::int32_t width, std::int32_t height,
                                 std::int32_t imageWidth, bool /*flag*/) {
  fImageOffset = BytesOfPixels(pixelOffset);
  fWidth = width;
  fHeight = height;
  fImageStride = BytesOfPixels(imageWidth);
}

bool BitmapDataBlock::SetupData(const unsigned char* source, std::int32_t size,
                                unsigned char** buffer, std::int32_t* sizeField,
                                std::int32_t* capacityField) {
  // First of all, so that an exception of the host's does not leave a size without its buffer.
  *sizeField = 0;
  if (*buffer == nullptr || *capacityField < size) {
    zlibvideo::ReleaseToHostAndClear(buffer);
    *capacityField = size;
    if (size < 1) return false;
    *buffer =
        static_cast<unsigned char*>(zlibvideo::AllocateFromHost(static_cast<std::size_t>(size)));
    if (*buffer == nullptr) return false;
  }
  if (size >= 1 && source != nullptr) {
    std::memcpy(*buffer, source, static_cast<std::size_t>(size));
    *sizeField = size;
  }
  return true;
}

bool BitmapDataBlock::SetRawData(const unsigned char* source, std::int32_t size) {
  fDrawn = false;
  return SetupData(source, size, &fRawData, &fRawDataSize, &fRawDataCapacity);
}

bool BitmapDataBlock::SetPreviousData(const unsigned char* source, std::int32_t size) {
  return SetupData(source, size, &fPreviousData, &fPreviousDataSize, &fPreviousDataCapacity);
}

bool BitmapDataBlock::SetConvertedData(const unsigned char* source, std::int32_t size) {
  return SetupData(source, size, &fConvertedData, &fConvertedDataSize, &fConvertedDataCapacity);
}
