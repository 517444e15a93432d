// Memory that cannot be had, at every allocation of one later frame in turn: the
// call fails, the run stays as it was, and goes on to the result that it would have
// had. A program of its own, since it replaces the global allocation functions.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <ostream>

#include "run_state.h"
#include "support/host_record.h"
#include "support/scenes.h"
#include "twin_compare.h"

namespace {

// Allocations of this thread that still succeed; negative: all of them.
thread_local long g_left = -1;
thread_local bool g_failed = false;
thread_local bool g_countNew = false;
thread_local bool g_countMatrices = false;

bool MustFail(bool counted) {
  if (!counted || g_left < 0) return false;
  if (g_left-- > 0) return false;
  g_failed = true;  // once: what cleans up may allocate
  return true;
}

void* Allocate(std::size_t size, std::size_t alignment) {
  if (MustFail(g_countNew)) throw std::bad_alloc();
  void* p = nullptr;
  if (posix_memalign(&p, std::max(alignment, sizeof(void*)), size) != 0) throw std::bad_alloc();
  return p;
}

}  // namespace

void* operator new(std::size_t size) {
  return Allocate(size, alignof(std::max_align_t));
}
void* operator new[](std::size_t size) {
  return Allocate(size, alignof(std::max_align_t));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return Allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return Allocate(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete[](void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
  std::free(p);
}
void operator delete(void* p, std::align_val_t) noexcept {
  std::free(p);
}
void operator delete[](void* p, std::align_val_t) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t, std::align_val_t) noexcept {
  std::free(p);
}
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept {
  std::free(p);
}

// The image library takes a matrix's pixels first and its header after them; where
// the header is refused, it loses the pixels. That is no leak of ours.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:cv::fastMalloc\n";
}

namespace {

// Pixels of every matrix of the process.
class FailingMatrices : public cv::MatAllocator {
 public:
  cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, size_t* step,
                         cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    if (MustFail(g_countMatrices)) {
      throw cv::Exception(cv::Error::StsNoMem, "no memory", "allocate", __FILE__, __LINE__);
    }
    return cv::Mat::getStdAllocator()->allocate(dims, sizes, type, data, step, flags, usage);
  }
  bool allocate(cv::UMatData* data, cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    return cv::Mat::getStdAllocator()->allocate(data, flags, usage);
  }
  void deallocate(cv::UMatData* data) const override {
    cv::Mat::getStdAllocator()->deallocate(data);
  }
};

struct Row {
  const char* name;
  bool matrices;  // else operator new
  int level;
  int mode;
  int target;  // the frame whose call fails; 1 makes the mosaic
  bool grows;  // whether that frame makes or grows the mosaic
  int undoDepth = 0;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}

class Allocation : public ::testing::TestWithParam<Row> {
 protected:
  Allocation() {
    RandomSource random(17);
    const int level = GetParam().level;
    const cv::Size size = level == 1 ? cv::Size(200, 160) : cv::Size(400, 320);
    const cv::Mat scene = GetParam().mode == 0
                              ? scenes::Dense(random, size.height + 60, 3 * size.width, level)
                              : scenes::Quiet(random, size.height + 60, 3 * size.width, level);
    const int grows[] = {0, 56, 112, 168};
    const int fits[] = {0, 56, 28, 84};
    for (int k = 0; k < 4; ++k) {
      const int way = GetParam().grows ? grows[k] : fits[k];
      m_frames.push_back(scenes::Cut(scene, cv::Point(10 + way * level, 10 + 6 * level * k), size));
    }
    cv::Mat::setDefaultAllocator(&m_allocator);
    cv::setNumThreads(1);
  }
  ~Allocation() override {
    cv::Mat::setDefaultAllocator(cv::Mat::getStdAllocator());
    cv::setNumThreads(-1);
  }

  void Feed(JQImageStitching& stitcher, int frame) {
    HostRecord record(m_frames[frame]);
    stitcher.Stitching(record.get(), GetParam().mode, GetParam().level, 8);
  }

  // Whether the call failed, with the n-th allocation refused.
  bool FeedWithFailure(JQImageStitching& stitcher, int frame, long n) {
    HostRecord record(m_frames[frame]);
    return WithFailure(
        n, [&] { stitcher.Stitching(record.get(), GetParam().mode, GetParam().level, 8); });
  }

  template <class Call>
  bool WithFailure(long n, Call call) {
    g_countMatrices = GetParam().matrices;
    g_countNew = !GetParam().matrices;
    g_failed = false;
    g_left = n;
    bool threw = false;
    try {
      call();
    } catch (const std::bad_alloc&) {
      threw = true;
    } catch (const cv::Exception&) {
      threw = true;
    }
    g_left = -1;
    g_countMatrices = g_countNew = false;
    return threw;
  }

  FailingMatrices m_allocator;
  std::vector<cv::Mat> m_frames;
};

}  // namespace

TEST_P(Allocation, FailureAnywhereInAFrameLeavesTheRun) {
  const int target = GetParam().target;
  const int count = static_cast<int>(m_frames.size());
  JQImageStitching control;
  control.SetUndoDepth(GetParam().undoDepth);
  cv::Size grownFrom;
  for (int k = 0; k < count; ++k) {
    if (k == target) grownFrom = control.GetMosaic().size();
    Feed(control, k);
    if (k == target) {
      ASSERT_EQ(control.GetMosaic().size() != grownFrom, GetParam().grows);
      ASSERT_TRUE(control.IsLastFrameAccepted());
    }
  }

  int points = 0;
  for (long n = 0;; ++n) {
    SCOPED_TRACE("allocation " + std::to_string(n));
    JQImageStitching stitcher;
    stitcher.SetUndoDepth(GetParam().undoDepth);
    for (int k = 0; k < target; ++k) Feed(stitcher, k);
    const RunState before(stitcher);
    const int undoCount = stitcher.GetUndoCount();
    const bool threw = FeedWithFailure(stitcher, target, n);
    if (!g_failed) {
      EXPECT_FALSE(threw);
      break;
    }
    ++points;
    if (threw) {
      EXPECT_TRUE(before.IsStillThatOf(stitcher, RunState::kWithCurrentFrame));
      EXPECT_EQ(stitcher.GetUndoCount(), undoCount);
      Feed(stitcher, target);
    }
    for (int k = target + 1; k < count; ++k) Feed(stitcher, k);
    ExpectSame(ViewOf(stitcher), ViewOf(control));
    EXPECT_EQ(stitcher.GetUndoCount(), control.GetUndoCount());
    if (HasFailure()) return;
  }
  std::printf("%d allocations refused\n", points);
  EXPECT_GT(points, 5);
}

// The calls that take a run back, take it up elsewhere, save and restore it.
TEST_P(Allocation, FailureAnywhereInAnotherCallLeavesTheRun) {
  using Call = void (*)(JQImageStitching&, const JQStitchingState&);
  const Call calls[] = {
      [](JQImageStitching& stitcher, const JQStitchingState&) {
        // A host that looks at the mosaic keeps it from being made smaller in place.
        const cv::Mat held = stitcher.GetMosaic();
        stitcher.UndoLastFrame();
      },
      [](JQImageStitching& stitcher, const JQStitchingState&) {
        stitcher.ContinueAt(stitcher.GetCurrentPosition());
      },
      [](JQImageStitching& stitcher, const JQStitchingState&) { stitcher.SaveState(); },
      [](JQImageStitching& stitcher, const JQStitchingState& state) {
        stitcher.RestoreState(state);
      }};
  JQImageStitching saved;
  saved.SetUndoDepth(1);
  for (int k = 0; k < 2; ++k) Feed(saved, k);
  const JQStitchingState state = saved.SaveState();
  int points = 0;
  for (const Call call : calls) {
    SCOPED_TRACE("call " + std::to_string(&call - calls));
    for (long n = 0;; ++n) {
      SCOPED_TRACE("allocation " + std::to_string(n));
      JQImageStitching stitcher;
      stitcher.SetUndoDepth(GetParam().undoDepth);
      for (int k = 0; k <= GetParam().target; ++k) Feed(stitcher, k);
      const RunState before(stitcher);
      const int undoCount = stitcher.GetUndoCount();
      const bool threw = WithFailure(n, [&] { call(stitcher, state); });
      if (!g_failed) {
        EXPECT_FALSE(threw);
        break;
      }
      // Features that could not be found in time are found with the next frame.
      if (!threw) continue;
      ++points;
      EXPECT_TRUE(before.IsStillThatOf(stitcher, RunState::kWithCurrentFrame));
      EXPECT_EQ(stitcher.GetUndoCount(), undoCount);
      if (HasFailure()) return;
    }
  }
  std::printf("%d allocations refused\n", points);
  EXPECT_GT(points, 3);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Allocation,
    ::testing::Values(Row{"PixelsOfAGrowingFrame", true, 1, 0, 2, true},
                      Row{"PixelsOfAGrowingFrameAtLevelTwo", true, 2, 0, 2, true},
                      Row{"PixelsOfAGrowingFrameByMotion", true, 1, 1, 2, true},
                      Row{"PixelsOfAFrameThatFits", true, 1, 0, 2, false},
                      Row{"PixelsOfTheFirstMosaic", true, 1, 0, 1, true},
                      Row{"PixelsWithUndo", true, 1, 0, 2, true, 2},
                      Row{"PixelsWithUndoAtLevelTwo", true, 2, 0, 2, true, 1},
                      Row{"ObjectsOfAGrowingFrame", false, 1, 0, 2, true},
                      Row{"ObjectsOfAGrowingFrameAtLevelTwo", false, 2, 0, 2, true},
                      Row{"ObjectsOfAFrameThatFits", false, 1, 0, 2, false},
                      Row{"ObjectsOfTheFirstMosaic", false, 1, 0, 1, true},
                      Row{"ObjectsWithUndo", false, 1, 0, 2, true, 2}),
    [](const auto& row) { return row.param.name; });
