#include "tests/CountingHost.h"

#include <sys/mman.h>
#include <unistd.h>

#include "host/GCHeap.h"
#include "host/SystemMemory.h"

namespace zlibvideo {
namespace {

void Note(std::string call, std::initializer_list<int> arguments = {}) {
  for (const int argument : arguments) call += " " + std::to_string(argument);
  Host().calls.push_back(call);
}

[[noreturn]] void Stop(const char* reason) {
  std::fprintf(stderr, "%s\n", reason);
  std::abort();
}

}  // namespace

HostBytes MakeGuarded(std::size_t size, unsigned char fill, bool atStart) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t used = (size + page - 1) / page * page;
  constexpr int kAccess = PROT_READ | PROT_WRITE, kKind = MAP_PRIVATE | MAP_ANONYMOUS;
  auto* base = static_cast<unsigned char*>(mmap(nullptr, used + 2 * page, kAccess, kKind, -1, 0));
  if (base == MAP_FAILED || mprotect(base, page, PROT_NONE) != 0 ||
      mprotect(base + page + used, page, PROT_NONE) != 0) {
    Stop("cannot map");
  }
  unsigned char* bytes = base + page + (atStart ? 0 : used - size);
  std::memset(bytes, fill, size);
  return {bytes, [=](unsigned char*) { munmap(base, used + 2 * page); }};
}

HostBytes MakeGuarded(const Bytes& bytes, bool atStart) {
  HostBytes copy = MakeGuarded(bytes.size(), 0, atStart);
  std::copy(bytes.begin(), bytes.end(), copy.get());
  return copy;
}

CountingHost& Host() {
  static thread_local CountingHost host;
  return host;
}

void CountingBitmap::Realloc(int width, int height, EBitmapType type) {
  if (width + extra == GetWidth() && height + extra == GetHeight()) return;
  const int rowLength = (width + extra) * kBitmapPixelBytes;
  fPixels = MakeGuarded(static_cast<std::size_t>(rowLength * (height + extra)), Host().fill);
  SetSurface(type, nullptr, 0, width + extra, height + extra);
  SetSurface(type, TopRow(), RowLength(), GetWidth(), GetHeight());
}

unsigned char* CountingBitmap::TopRow() const {
  return fPixels.get() + (bottomUp ? -RowLength() * (GetHeight() - 1) : 0);
}

BitmapPixels CountingBitmap::Pixels() const {
  Bytes pixels;
  for (int row = 0; row < GetHeight(); ++row) {
    const unsigned char* start = TopRow() + RowLength() * row;
    pixels.insert(pixels.end(), start, start + GetWidth() * kBitmapPixelBytes);
  }
  return {GetWidth(), pixels};
}

}  // namespace zlibvideo

using namespace zlibvideo;

void* Vorn::SystemNew(unsigned long size, FixedMallocOpts opts) {
  CountingHost& host = Host();
  if (host.failAt != 0 && host.allocations.size() + 1 >= host.failAt) {
    host.failAt = 0;
    if (host.failure == AllocationFailure::kBadAlloc) throw std::bad_alloc();
    if (host.failure == AllocationFailure::kNull) return nullptr;
    throw std::runtime_error("heap is broken");
  }
  Host().allocations.push_back({size, opts});
  // Block records are too many to give each a page.
  HostBytes memory = opts == kFixedMallocBlockRecord
                         ? HostBytes(static_cast<unsigned char*>(std::malloc(size)), std::free)
                         : MakeGuarded(size, 0);
  std::memset(memory.get(), Host().fill, size);
  return Host().live.emplace(memory.get(), std::move(memory)).first->first;
}

void Vorn::SystemDelete(void* memory) {
  if (Host().throwOnRelease) throw std::runtime_error("heap is broken");
  if (Host().live.erase(memory) != 1) Stop("released what was not allocated");
}

void Vorn::GCHeap::SignalObjectTooLarge() {
  Stop("object too large");
}
void SBitmapCore::LockBits(bool forWriting) {
  Note("LockBits", {forWriting});
}
void SBitmapCore::UnlockBits() {
  Note("UnlockBits");
}
void SBitmapCore::UpdateMipMap(SRECT r) {
  Note("UpdateMipMap", {r.xMin, r.xMax, r.yMin, r.yMax});
  if (std::exchange(Host().throwOnUpdate, false)) throw std::runtime_error("no update");
}
VideoDecompressor::VideoDecompressor(CorePlayer* a, NetStream* b) {
  Note("Made", {a != nullptr, b != nullptr});
  fVideoResourcesReleased = true;  // for the decoder to clear
}
VideoDecompressor::~VideoDecompressor() {
  Note("Gone, allocations left:", {static_cast<int>(Host().live.size())});
}
void VideoDecompressor::AddRef() {
  ++fRefCount;
}
void VideoDecompressor::DeleteBuffers(Vorn::GCAPI::GCRef<SObject>) {}
void VideoDecompressor::ReallocBuffers(Vorn::GCAPI::GCRef<SObject>) {}
void VideoDecompressor::DeleteHWCodec(Vorn::GCAPI::GCRef<SObject>) {}

void SBitmapCore::Restore() {
  Note("Restore");
  const auto* bitmap = static_cast<CountingBitmap*>(this);
  SetSurface(GetType(), bitmap->TopRow(), bitmap->RowLength(), GetWidth(), GetHeight());
}

bool VideoDecompressor::ReallocBitmap(Vorn::GCAPI::GCRef<SObject> video, int width, int height,
                                      bool flag1, bool flag2, EBitmapType type, SRECT const* area,
                                      SPOINT const* origin) {
  Note("ReallocBitmap", {width, height, flag1, flag2, type, area != nullptr, origin != nullptr});
  auto& object = *static_cast<CountingVideoObject*>(video.Get());
  object.bitmap.Realloc(width, height, type);
  object.record.fBitmap = object.getsABitmap ? &object.bitmap : nullptr;
  return false;
}
