// The stand-in host returns no stale bytes: a picture shows its memory where no message wrote.

#include <gtest/gtest.h>

#include <algorithm>

#include "host/SystemMemory.h"

TEST(StandInTest, MemoryIsZeroFilled) {
  for (int i = 0; i < 10; ++i) {
    constexpr unsigned long kSize = 5000;
    auto* memory = static_cast<unsigned char*>(Vorn::SystemNew(kSize, Vorn::kFixedMallocDefault));
    EXPECT_EQ(std::count(memory, memory + kSize, 0), kSize);
    std::fill_n(memory, kSize, 0xEE);
    Vorn::SystemDelete(memory);
  }
}
