// The C interface, on messages whose pictures are known.

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <memory>

#include "capi/zlibvideo.h"
#include "tests/GoodStream.h"

using namespace zlibvideo;

namespace {

std::size_t allocationsLeft = SIZE_MAX;
bool refused = false;

void* Allocate(void* memory) {
  refused |= allocationsLeft == 0;
  if (allocationsLeft != 0) return --allocationsLeft, memory;
  std::free(memory);
  return nullptr;
}

using Decoder = std::unique_ptr<zlibvideo_decoder, decltype(&zlibvideo_close)>;

Decoder Open(std::size_t memoryLimit = SIZE_MAX) {
  return {zlibvideo_open(memoryLimit), &zlibvideo_close};
}

bool Decode(const Decoder& decoder, const Bytes& message) {
  return zlibvideo_decode(decoder.get(), message.data(), message.size()) == 1;
}

std::size_t Bound(const Decoder& decoder, const Bytes& message) {
  return zlibvideo_memory_bound(decoder.get(), message.data(), message.size());
}

/// With blue first.
BitmapPixels Shown(const Decoder& decoder) {
  const zlibvideo_picture& picture = *zlibvideo_get_picture(decoder.get());
  const std::size_t size = picture.row_length * static_cast<std::size_t>(picture.height);
  BitmapPixels shown{picture.width, Bytes(picture.pixels, picture.pixels + size)};
  for (std::size_t i = 0; i < size; i += 4) std::swap(shown.bytes[i], shown.bytes[i + 2]);
  return shown;
}

/// Copies the changed blocks of `shown` to `last`.
void CopyChanges(const zlibvideo_picture& picture, const Bytes& shown, Bytes* last) {
  last->resize(shown.size());
  for (std::size_t i = 0; i < picture.changed_count; ++i) {
    const zlibvideo_area& block = picture.changed_blocks[i];
    for (int row = block.top; row < block.top + block.height; ++row) {
      const auto at = (std::ptrdiff_t{row} * picture.width + block.left) * 4;
      std::copy_n(shown.begin() + at, block.width * 4, last->begin() + at);
    }
  }
}

}  // namespace

extern "C" {
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return Allocate(__real_calloc(count, size));
}
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
  return Allocate(__real_aligned_alloc(alignment, size));
}
}

TEST(CInterfaceTest, ShowsPicturesAndTheirChanges) {
  const Decoder decoder = Open();
  const zlibvideo_picture& picture = *zlibvideo_get_picture(decoder.get());
  EXPECT_EQ(picture.pixels, nullptr);
  std::vector<std::size_t> counts;
  std::vector<std::array<int, 4>> areas;
  Bytes last;
  for (const Step& step : GoodStream()) {
    ASSERT_TRUE(Decode(decoder, step.message));
    ASSERT_TRUE(SamePixels(step.bitmap, Shown(decoder)));
    CopyChanges(picture, step.bitmap.bytes, &last);
    EXPECT_TRUE(SameBytes(step.bitmap.bytes, last));
    EXPECT_EQ(picture.complete, 1);
    const auto [left, top, width, height] = picture.changed;
    counts.push_back(picture.changed_count);
    areas.push_back({left, top, width, height});

    EXPECT_FALSE(Decode(decoder, Slice(step.message, 0, 9)));
    EXPECT_TRUE(SamePixels(step.bitmap, Shown(decoder)));
    EXPECT_TRUE(picture.changed_count == 0 && picture.changed.width == 0);
  }
  EXPECT_EQ(counts, (std::vector<std::size_t>{6, 6, 6, 6, 2, 4}));
  EXPECT_EQ(areas[3], (std::array{0, 0, 40, 24}));
  EXPECT_EQ(areas[4], (std::array{0, 8, 32, 16}));

  Message empty{.header = Header(kCodecTypeVersion1, 70, 35, 32, 16), .records = {}};
  empty.records.resize(9);
  ASSERT_TRUE(Decode(decoder, empty.Build()));
  EXPECT_TRUE(picture.complete == 0 && picture.width == 70 && picture.block_width == 32);
}

TEST(CInterfaceTest, FailsMessagesOverTheLimit) {
  const Step step = GoodStream()[0];  // version 1, version 2 of the same size
  const Bytes version2 = GoodStream()[1].message;
  const std::size_t limit = Bound(Open(), step.message);
  EXPECT_FALSE(Decode(Open(limit - 1), step.message));
  const Decoder decoder = Open(limit);
  EXPECT_TRUE(Decode(decoder, step.message));
  EXPECT_FALSE(Decode(decoder, version2));
  EXPECT_TRUE(SamePixels(step.bitmap, Shown(decoder)));
  // Until a message succeeds, the last picture stays.
  const Bytes tiny = Message{.header = Header(3, 16, 16, 16, 16), .records = {{}}}.Build();
  EXPECT_GT(Bound(decoder, tiny), step.bitmap.bytes.size());
  EXPECT_LT(Bound(Open(), tiny), step.bitmap.bytes.size());

  const Decoder both = Open();  // keeps the buffers of version 2
  EXPECT_TRUE(Decode(both, version2));
  EXPECT_EQ(Bound(both, step.message), Bound(both, version2));
}

TEST(CInterfaceTest, FailsMessagesWithoutMemory) {
  const std::vector<Step> steps = GoodStream();
  bool refusedAny = true;
  for (std::size_t allocations = 0; refusedAny; ++allocations) {
    SCOPED_TRACE(allocations);
    allocationsLeft = allocations;
    refused = false;
    const Decoder decoder = Open();
    EXPECT_EQ(decoder == nullptr, refused);
    BitmapPixels last;
    for (std::size_t i = 0; i < steps.size() && !refused; ++i) {
      const bool decoded = Decode(decoder, steps[i].message);
      EXPECT_EQ(decoded, !refused);
      if (decoded) last = steps[i].bitmap;
      EXPECT_TRUE(Shown(decoder).width == 0 || SamePixels(last, Shown(decoder)));
    }
    refusedAny = refused;
    allocationsLeft = SIZE_MAX;
    if (!decoder) continue;
    for (const Step& step : steps) {
      ASSERT_TRUE(Decode(decoder, step.message));
      ASSERT_TRUE(SamePixels(step.bitmap, Shown(decoder)));
    }
  }
}
