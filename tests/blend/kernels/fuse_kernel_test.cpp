#include <gtest/gtest.h>

#include <vector>

#include "blend/kernels/fuse_row.h"
#include "support/property_test.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

class FuseKernel : public PropertyTest {};
JQ_AT_EVERY_CPU_LEVEL(FuseKernel);

std::uint8_t Plain(int w, int n, int o, int divisor) {
  return static_cast<std::uint8_t>(((255 - w) * n + w * o) / divisor);
}

using Kernel = void (*)(const std::uint8_t*, const std::uint8_t*, std::uint8_t*, std::uint8_t*,
                        std::size_t);

// Every weight with every pair of samples.
void CheckAll(Kernel kernel, int divisor) {
  constexpr int kSamples = 256 * 256;
  Bytes old(kSamples), weight(kSamples), frame(kSamples);
  for (int w = 0; w < 256; ++w) {
    for (int k = 0; k < kSamples; ++k) {
      frame[k] = static_cast<std::uint8_t>(k % 256);
      old[k] = static_cast<std::uint8_t>(k / 256);
      weight[k] = static_cast<std::uint8_t>(w);
    }
    kernel(old.data(), weight.data(), frame.data(), nullptr, kSamples);
    for (int k = 0; k < kSamples; ++k) {
      ASSERT_EQ(frame[k], Plain(w, k % 256, k / 256, divisor))
          << "weight " << w << ", new " << k % 256 << ", old " << k / 256;
    }
  }
}

TEST_P(FuseKernel, EveryColourSample) {
  CheckAll(jqstitching::FuseColourRow, 255);
}

TEST_P(FuseKernel, EveryGreySample) {
  CheckAll(jqstitching::FuseGreyRow, 256);
}

// Random lengths and places; the block is the old row, another one, or absent.
TEST_P(FuseKernel, RowsStayWithinTheirBounds) {
  Repeat(300, [](RandomSource& random) {
    const bool colour = random.OneIn(2);
    const int count = random.Size(900);
    const int start = random.Int(0, 70);
    const int total = start + count + 70;
    Bytes old(total), weight(total), frame(total), block(total);
    const int flat = random.Int(0, 3);  // runs of weight 0 and 255 as well
    for (int k = 0; k < total; ++k) {
      old[k] = static_cast<std::uint8_t>(random.Int(0, 255));
      frame[k] = static_cast<std::uint8_t>(random.Int(0, 255));
      block[k] = static_cast<std::uint8_t>(random.Int(0, 255));
      const int w = flat == 0   ? random.Int(0, 255)
                    : flat == 1 ? 0
                    : flat == 2 ? 255
                    : k > 100   ? 7
                                : 0;
      weight[k] = static_cast<std::uint8_t>(w);
    }
    Bytes wantedFrame = frame;
    for (int k = start; k < start + count; ++k) {
      wantedFrame[k] = Plain(weight[k], frame[k], old[k], colour ? 255 : 256);
    }
    const int target = random.Int(0, 2);
    Bytes& written = target == 0 ? old : block;
    Bytes wantedBlock = written;
    if (target != 2) {
      std::copy_n(wantedFrame.begin() + start, count, wantedBlock.begin() + start);
    }
    const Kernel kernel = colour ? jqstitching::FuseColourRow : jqstitching::FuseGreyRow;
    kernel(old.data() + start, weight.data() + start, frame.data() + start,
           target == 2 ? nullptr : written.data() + start, count);
    for (int k = 0; k < total; ++k) {
      ASSERT_EQ(frame[k], wantedFrame[k]) << "frame, sample " << k - start << " of " << count;
      ASSERT_EQ(written[k], wantedBlock[k]) << "block, sample " << k - start << " of " << count;
    }
  });
}

}  // namespace
