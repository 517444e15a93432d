#include <algorithm>
#include <cstring>
#include <numeric>

#include "registration/kernels/corners.h"

// clang-format off: the included file is this one, once per level
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "registration/kernels/suppression.cpp"
#include <hwy/foreach_target.h>
// clang-format on
#include <hwy/highway.h>

#include "cpu/dispatch.h"
#include "cpu/vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace jqstitching {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The least of `limit` and the squared distances, in 32-bit integers that wrap.
std::int32_t NearestKernel(const std::int32_t* xs, const std::int32_t* ys, size_t count,
                           std::int32_t x, std::int32_t y, std::int32_t limit) {
  const Vectors<std::int32_t> d;
  const size_t lanes = hn::Lanes(d);
  const auto vx = hn::Set(d, x), vy = hn::Set(d, y);
  auto nearest = hn::Set(d, limit);
  size_t i = 0;
  for (; i + lanes <= count; i += lanes) {
    const auto dx = hn::Sub(hn::LoadU(d, xs + i), vx);
    const auto dy = hn::Sub(hn::LoadU(d, ys + i), vy);
    nearest = hn::Min(nearest, hn::Add(hn::Mul(dx, dx), hn::Mul(dy, dy)));
  }
  std::int32_t least = hn::GetLane(hn::MinOfLanes(d, nearest));
  for (; i < count; ++i) {
    const auto dx = static_cast<std::uint32_t>(xs[i]) - static_cast<std::uint32_t>(x);
    const auto dy = static_cast<std::uint32_t>(ys[i]) - static_cast<std::uint32_t>(y);
    least = std::min(least, static_cast<std::int32_t>(dx * dx + dy * dy));
  }
  return least;
}

}  // namespace HWY_NAMESPACE
}  // namespace jqstitching
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace jqstitching {

HWY_EXPORT(NearestKernel);

namespace {

constexpr std::int32_t kCap = 65535;

// Sorts ascending: stronger responses first, equal ones in list order. Responses
// are positive, so their bits order as they do.
std::uint64_t StrengthKey(float response, size_t index) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, &response, sizeof bits);
  return (std::uint64_t{~bits} << 32) | static_cast<std::uint32_t>(index);
}

std::vector<std::uint64_t> StrengthKeys(const std::vector<Candidate>& candidates) {
  std::vector<std::uint64_t> keys(candidates.size());
  for (size_t i = 0; i < keys.size(); ++i) keys[i] = StrengthKey(candidates[i].response, i);
  return keys;
}

void SortFirst(std::vector<std::uint64_t>& keys, size_t count) {
  const auto middle = keys.begin() + static_cast<std::ptrdiff_t>(count);
  if (middle != keys.end()) std::nth_element(keys.begin(), middle, keys.end());
  std::sort(keys.begin(), middle);
}

size_t IndexOf(std::uint64_t key) {
  return key & 0xFFFFFFFFu;
}

}  // namespace

void PreselectStrongest(std::vector<Candidate>& candidates, std::int32_t limit) {
  const auto kept = static_cast<std::int32_t>(7u * static_cast<std::uint32_t>(limit));
  const auto count = static_cast<size_t>(kept);  // a negative number is a huge size: no limit
  if (candidates.size() <= count) return;
  std::vector<std::uint64_t> keys = StrengthKeys(candidates);
  SortFirst(keys, count);
  std::vector<Candidate> strongest(count);
  for (size_t i = 0; i < count; ++i) strongest[i] = candidates[IndexOf(keys[i])];
  candidates.swap(strongest);
}

std::vector<float> SuppressionRadii(const std::vector<Candidate>& candidates) {
  const size_t count = candidates.size();
  std::vector<std::uint64_t> keys = StrengthKeys(candidates);
  std::sort(keys.begin(), keys.end());
  std::vector<std::int32_t> xs(count), ys(count);
  for (size_t i = 0; i < count; ++i) {
    const Candidate& c = candidates[IndexOf(keys[i])];
    xs[i] = c.position.x;
    ys[i] = c.position.y;
  }
  // In order of strength, those more than twice as strong as a candidate are the
  // first ones, and no fewer for each weaker candidate.
  const auto nearest = JQ_DISPATCH(NearestKernel);
  std::vector<float> radii(count);
  size_t stronger = 0;
  for (size_t i = 0; i < count; ++i) {
    const size_t index = IndexOf(keys[i]);
    const double response = candidates[index].response;
    while (stronger < i && 0.5 * candidates[IndexOf(keys[stronger])].response > response) {
      ++stronger;
    }
    radii[index] = static_cast<float>(nearest(xs.data(), ys.data(), stronger, xs[i], ys[i], kCap));
  }
  return radii;
}

std::vector<int> LargestRadii(const std::vector<float>& radii, size_t count) {
  std::vector<std::uint64_t> keys(radii.size());
  for (size_t i = 0; i < keys.size(); ++i) {
    const auto below = static_cast<std::uint64_t>(kCap - static_cast<std::int64_t>(radii[i]));
    keys[i] = (below << 32) | static_cast<std::uint32_t>(i);
  }
  SortFirst(keys, count);
  std::vector<int> order(count);
  for (size_t i = 0; i < count; ++i) order[i] = static_cast<int>(IndexOf(keys[i]));
  return order;
}

}  // namespace jqstitching
#endif  // HWY_ONCE
