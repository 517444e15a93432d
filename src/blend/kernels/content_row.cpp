#include "blend/kernels/content_row.h"

#include <cstddef>
#include <cstring>

#include "blend/kernels/row_layout.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "blend/kernels/content_row.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>
// Above: once per level. Below: once.
#include "cpu/dispatch.h"
#include "cpu/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The largest sample that an empty colour pixel can have.
constexpr std::uint8_t kDarkest = 4;

struct Seen {
  bool empty = false;
  bool filled = false;
};

bool IsEmptyColour(const std::uint8_t* p) {
  return p[1] == 0 && ((p[0] == 0 && p[2] <= kDarkest) || (p[0] == 1 && p[2] <= 1));
}

void MarkOne(bool empty, std::uint8_t& content, Seen& seen) {
  content = empty ? 0 : 255;
  (empty ? seen.empty : seen.filled) = true;
}

#if HWY_TARGET != HWY_SCALAR

using D = Vectors<std::uint8_t>;
using V = hn::Vec<D>;

void StoreMarks(hn::Mask<D> empty, std::uint8_t* content, Seen& seen) {
  const D d;
  hn::StoreU(hn::VecFromMask(d, hn::Not(empty)), d, content);
  if (!hn::AllFalse(d, empty)) seen.empty = true;
  if (!hn::AllTrue(d, empty)) seen.filled = true;
}

// Both return the columns done.
int MarkColours(const std::uint8_t* pixels, std::uint8_t* content, int cols, Seen& seen) {
  const D d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const V zero = hn::Zero(d), one = hn::Set(d, 1), darkest = hn::Set(d, kDarkest);
  int c = 0;
  for (; c + lanes <= cols; c += lanes) {
    const std::uint8_t* p = pixels + 3 * static_cast<size_t>(c);
    const V low = hn::LoadU(d, p), mid = hn::LoadU(d, p + lanes),
            high = hn::LoadU(d, p + 2 * lanes);
    // Samples are seldom dark, and where they are, most often all are 0.
    const V least = hn::Min(low, hn::Min(mid, high));
    if (hn::AllTrue(d, hn::Gt(least, darkest))) {
      hn::StoreU(hn::Set(d, 255), d, content + c);
      seen.filled = true;
      continue;
    }
    if (hn::AllTrue(d, hn::Eq(hn::Or(low, hn::Or(mid, high)), zero))) {
      hn::StoreU(zero, d, content + c);
      seen.empty = true;
      continue;
    }
    V first, second, third;
    hn::LoadInterleaved3(d, p, first, second, third);
    const auto of0 = hn::And(hn::Eq(first, zero), hn::Not(hn::Gt(third, darkest)));
    const auto of1 = hn::And(hn::Eq(first, one), hn::Not(hn::Gt(third, one)));
    StoreMarks(hn::And(hn::Eq(second, zero), hn::Or(of0, of1)), content + c, seen);
  }
  return c;
}

int MarkGreys(const std::uint8_t* pixels, std::uint8_t* content, int cols, Seen& seen) {
  const D d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  int c = 0;
  for (; c + lanes <= cols; c += lanes) {
    StoreMarks(hn::Eq(hn::LoadU(d, pixels + c), hn::Zero(d)), content + c, seen);
  }
  return c;
}

#else

int MarkColours(const std::uint8_t*, std::uint8_t*, int, Seen&) {
  return 0;
}
int MarkGreys(const std::uint8_t*, std::uint8_t*, int, Seen&) {
  return 0;
}

#endif  // HWY_TARGET != HWY_SCALAR

RowContent MarkKernel(const std::uint8_t* pixels, int channels, std::uint8_t* content, int cols) {
  Seen seen;
  if (channels == 1) {
    for (int c = MarkGreys(pixels, content, cols, seen); c < cols; ++c) {
      MarkOne(pixels[c] == 0, content[c], seen);
    }
  } else {
    for (int c = MarkColours(pixels, content, cols, seen); c < cols; ++c) {
      MarkOne(IsEmptyColour(pixels + 3 * static_cast<size_t>(c)), content[c], seen);
    }
  }
  std::memset(content + cols, 0, PaddedCols(cols) - cols);
  if (!seen.empty) return RowContent::kFull;
  return seen.filled ? RowContent::kMixed : RowContent::kEmpty;
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(MarkKernel);

RowContent MarkContent(const std::uint8_t* pixels, int channels, std::uint8_t* content, int cols) {
  return JQ_DISPATCH(MarkKernel)(pixels, channels, content, cols);
}

}  // namespace jqstitching
#endif  // HWY_ONCE
