// Held against a plain list of bytes. Built twice: with the file for this system, and with
// the one that any system can use.

#include "picture/page_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "support/random_source.h"

using namespace jqstitching;

// A sanitizer's heap ends the program where too much is asked of it, unless it is told to
// refuse.
#define JQ_SANITIZER_ASKS extern "C" __attribute__((visibility("default"))) const char*
JQ_SANITIZER_ASKS __asan_default_options();
JQ_SANITIZER_ASKS __asan_default_options() {
  return "allocator_may_return_null=1";
}
JQ_SANITIZER_ASKS __tsan_default_options();
JQ_SANITIZER_ASKS __tsan_default_options() {
  return "allocator_may_return_null=1";
}

TEST(PageMemory, GrowsShrinksAndIsBlackWhereItIsNew) {
  const std::uint64_t seed = TestSeed();
  std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
  RandomSource random(seed);
  for (int round = 0; round < 20; ++round) {
    std::vector<std::uint8_t> expected(static_cast<std::size_t>(random.Int(1, 20000)));
    void* block = TakePages(expected.size());
    ASSERT_NE(block, nullptr);
    for (int step = 0; step < 20; ++step) {
      ASSERT_EQ(std::memcmp(block, expected.data(), expected.size()), 0) << "step " << step;
      for (std::uint8_t& byte : expected) byte = static_cast<std::uint8_t>(random.Int(0, 255));
      std::memcpy(block, expected.data(), expected.size());
      const std::size_t begin = static_cast<std::size_t>(random.Int(0, 9000)) % expected.size();
      ExpectWrites(static_cast<std::uint8_t*>(block) + begin, expected.size() - begin);
      // Near each other as well as far: within a page and across some.
      const std::size_t size = static_cast<std::size_t>(
          random.OneIn(2) ? random.Int(1, 60000)
                          : std::max(1, static_cast<int>(expected.size()) + random.Int(-40, 40)));
      block = ResizePages(block, expected.size(), size);
      ASSERT_NE(block, nullptr);
      expected.resize(size, 0);
    }
    ReturnPages(block, expected.size());
  }
}

TEST(PageMemory, WhatCannotBeHadIsRefusedAndChangesNothing) {
  void* block = TakePages(5000);
  ASSERT_NE(block, nullptr);
  std::memset(block, 7, 5000);
  for (const std::size_t size : {SIZE_MAX, SIZE_MAX - 4095, SIZE_MAX / 2, SIZE_MAX / 4}) {
    EXPECT_EQ(TakePages(size), nullptr);
    EXPECT_EQ(ResizePages(block, 5000, size), nullptr);
  }
  const std::vector<std::uint8_t> expected(5000, 7);
  EXPECT_EQ(std::memcmp(block, expected.data(), expected.size()), 0);
  ReturnPages(block, 5000);
}
