// The stand-in host with another allocator, which counts the decoder's memory and limits it to a
// budget. A program that defines these three functions links the rest of the stand-in host. Define
// all three: they are a single object of the stand-in host.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

#include <zlibvideo/decoder/ZLibVideoDecompressor.h>
#include <zlibvideo/host/GCHeap.h>
#include <zlibvideo/host/SystemMemory.h>
#include <zlibvideo/host/standin/StandInVideoObject.h>

namespace {

constexpr std::size_t kHeader = alignof(std::max_align_t);  // holds the size, keeps the alignment
constexpr std::size_t kBudget = std::size_t{64} << 20;
std::size_t inUse = 0;

}  // namespace

void* Vorn::SystemNew(unsigned long size, FixedMallocOpts /*opts*/) {
  if (size > kBudget - inUse) throw std::bad_alloc();  // reaches the caller of the decoder
  void* memory = std::calloc(kHeader + size, 1);
  if (memory == nullptr) throw std::bad_alloc();
  *static_cast<std::size_t*>(memory) = size;
  inUse += size;
  return static_cast<unsigned char*>(memory) + kHeader;
}

void Vorn::SystemDelete(void* memory) {
  void* start = static_cast<unsigned char*>(memory) - kHeader;
  inUse -= *static_cast<std::size_t*>(start);
  std::free(start);
}

void Vorn::GCHeap::SignalObjectTooLarge() {
  std::abort();
}

int main() {
  // A key frame of 16 x 16 pixels in a block, whose record is empty: a black picture.
  unsigned char message[] = {0x13, 0x00, 16, 0x00, 16, 0x00, 0x00};

  StandInVideoObject video;
  auto* decoder = new ZLibVideoDecompressor(nullptr, nullptr);
  const bool decoded = decoder->DecompressVideoEmbedded(video.Ref(), message, sizeof(message));
  const std::size_t whileOpen = inUse;
  decoder->DecRef();

  std::printf("%s; %zu bytes while open, %zu afterwards\n", decoded ? "decoded" : "failed",
              whileOpen, inUse);
  return decoded && whileOpen != 0 && inUse == 0 ? 0 : 2;
}
