#ifndef ZLIBVIDEO_HOST_SBITMAPCORE_H
#define ZLIBVIDEO_HOST_SBITMAPCORE_H

#include <cstdint>

#include "EBitmapType.h"
#include "Export.h"
#include "Guarded.h"
#include "SRECT.h"

/// The host's bitmap surface. Row n starts at base address + n × row length. Row 0 is the top row.
/// A host derives its own bitmap from this class and keeps the fields true with `SetSurface`. The
/// host defines the operations that have no body here.
class ZLIBVIDEO_EXPORT SBitmapCore {
 public:
  SBitmapCore() = default;
  SBitmapCore(const SBitmapCore&) = delete;
  SBitmapCore& operator=(const SBitmapCore&) = delete;

  /// Guarded accessors: each stops the process if its field was overwritten behind the host's back.
  /// Width and height are in pixels, the row length is in bytes.
  EBitmapType GetType() const { return fType.Get(); }
  std::int32_t GetRowLength() const { return fRowLength.Get(); }
  std::int32_t GetWidth() const { return fWidth.Get(); }
  std::int32_t GetHeight() const { return fHeight.Get(); }

  /// Address of byte 0 of row 0. If the host has put the pixels away, calls `Restore` first. A
  /// bitmap that is not addressable returns its stored address, null or not. Called for every row,
  /// so the type is read only if the address is null.
  unsigned char* GetBMBaseAddr() {
    if (fBaseAddress.Get() == nullptr && fType.Get() != kBitmapNotAddressable) Restore();
    return fBaseAddress.Get();
  }

  /// Host service. Holds the pixels in place until `UnlockBits`. `forWriting` is always true here.
  void LockBits(bool forWriting);
  /// Host service. Ends a `LockBits`.
  void UnlockBits();
  /// Host service. The pixels of `area` have changed. Called while the pixels are locked: an
  /// exception leaves them locked.
  void UpdateMipMap(SRECT area);
  /// Host service. Makes the pixels addressable again and stores their address. The address must
  /// not stay null: the component writes there next. Called while the pixels are locked. Must not
  /// throw: the bitmap would stay locked and half drawn.
  void Restore();

 protected:
  ~SBitmapCore() = default;

  /// For the host: stores all fields together with their guards.
  void SetSurface(EBitmapType type, unsigned char* baseAddress, std::int32_t rowLength,
                  std::int32_t width, std::int32_t height) {
    fType.Set(type);
    fBaseAddress.Set(baseAddress);
    fRowLength.Set(rowLength);
    fWidth.Set(width);
    fHeight.Set(height);
  }

  Guarded<EBitmapType> fType;
  Guarded<unsigned char*> fBaseAddress;
  Guarded<std::int32_t> fRowLength;
  Guarded<std::int32_t> fWidth;
  Guarded<std::int32_t> fHeight;
};

#endif  // ZLIBVIDEO_HOST_SBITMAPCORE_H
