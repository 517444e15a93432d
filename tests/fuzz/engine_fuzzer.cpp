// The engine's methods, one after another on one engine, with matrices of odd types
// and sizes and numbers at their limits. A call answers, or raises what its header
// announces and leaves the outputs as they were.

#include <opencv2/core/utils/logger.hpp>
#include <stdexcept>
#include <vector>

#include "fuzz_input.h"
#include "jqstitchingalgorithm.h"
#include "limited_matrices.h"
#include "odd_pictures.h"
#include "require.h"

namespace {

constexpr int kMostCalls = 5;

using Points = std::vector<cv::Point>;

struct Bench {
  FuzzInput in;
  OddPictures pictures{in};
  JQStitchingAlgorithm engine;
};

enum class Range { kNone, kMayBeOut };

template <class Call>
bool Raises(Call&& call, Range range = Range::kNone) {
  try {
    call();
    return false;
  } catch (const cv::Exception&) {
    return true;
  } catch (const std::bad_alloc&) {
    return true;
  } catch (const std::out_of_range&) {
    Require(range == Range::kMayBeOut, "only some methods raise std::out_of_range");
    return true;
  }
}

// The same header on the same pixels.
bool IsSame(const cv::Mat& a, const cv::Mat& b) {
  return a.data == b.data && a.size == b.size && a.flags == b.flags;
}

void Tune(Bench& b) {
  FuzzInput& in = b.in;
  const int level = in.oneIn(4) ? in.number() : in.range(1, 6);
  b.engine.SetParameter(level, in.oneIn(3) ? in.number() : 8, in.u8() % 3, in.u8() % 2);
  if (in.oneIn(4)) b.engine.m_nDownScale = in.number();
  if (in.oneIn(4)) b.engine.m_nImageCols = in.number();
  if (in.oneIn(4)) b.engine.m_nImageRows = in.number();
  b.engine.m_nFlagThreshold = in.number();
  b.engine.m_fBrightThreshold = static_cast<float>(in.number());
  b.engine.m_fDefinitionThreshold = static_cast<float>(in.number());
}

void Lift(Bench& b) {
  cv::Mat source = b.pictures.next(), destination = b.pictures.next();
  Raises([&] { b.engine.JudgeImageChannel(source, destination); });
}

void Corners(Bench& b) {
  Points corners = b.in.oneIn(4) ? b.pictures.points() : Points();
  const Points before = corners;
  if (Raises([&] { b.engine.FindHarrisCornerCoordianteFun(b.pictures.next(), corners); }))
    Require(corners == before, "no corners are added by a call that raises");
}

void Describe(Bench& b) {
  const cv::Mat image = b.pictures.next();
  cv::Mat descriptors = b.pictures.next();
  const cv::Mat before = descriptors;
  if (Raises([&] { b.engine.NoRotaFeatureDescriber(image, b.pictures.points(), descriptors); }))
    Require(IsSame(descriptors, before), "descriptors stay when the call raises");
}

void Match(Bench& b) {
  const cv::Mat first = b.pictures.descriptors(), second = b.pictures.descriptors();
  Points pairs = b.pictures.points();
  const Points before = pairs;
  if (Raises([&] { b.engine.CalacDistanceIndexFun(first, second, pairs); }))
    Require(pairs == before, "no pairs are added by a call that raises");
}

void Rough(Bench& b) {
  const Points first = b.pictures.points(), second = b.pictures.points(),
               pairs = b.pictures.points();
  Points matchedFirst, matchedSecond;
  const bool raised =
      Raises([&] { b.engine.RoughMatchPoint(first, second, pairs, matchedFirst, matchedSecond); },
             Range::kMayBeOut);
  if (raised)
    Require(matchedFirst.empty() && matchedSecond.empty(), "no matches when the call raises");
}

void Agree(Bench& b) {
  const Points first = b.pictures.points(), second = b.pictures.points();
  Points inFirst, inSecond;
  float tx = 3, ty = 4;
  const bool raised =
      Raises([&] { b.engine.RansacMatchPointArrayFun(first, second, inFirst, inSecond, tx, ty); },
             Range::kMayBeOut);
  if (raised) Require(inFirst.empty() && tx == 3 && ty == 4, "nothing found when the call raises");
}

void Register(Bench& b) {
  const cv::Mat first = b.pictures.next(), second = b.pictures.next();
  int x = 1, y = 2, support = 3;
  if (Raises([&] { b.engine.ImageMosaicFun(first, second, x, y, support); }))
    Require(x == 1 && y == 2 && support == 3, "the shift stays when the call raises");
}

void Judge(Bench& b) {
  const cv::Mat first = b.pictures.next(), second = b.pictures.next();
  float value = 5;
  int flag = 6;
  const int x = b.in.number(), y = b.in.number(), rows = b.in.number(), cols = b.in.number();
  if (Raises([&] { b.engine.CalacOverLapImageFlages(x, y, rows, cols, first, second, flag); }))
    Require(flag == 6, "the flag stays when the call raises");
  if (Raises([&] { b.engine.CalacOverLapImageBright(first, second, value); }))
    Require(value == 5, "the brightness stays when the call raises");
  value = 5;
  if (Raises([&] { b.engine.CalacOverLapImageDefinition(first, second, value); }))
    Require(value == 5, "the sharpness stays when the call raises");
}

void TakeOut(Bench& b) {
  const cv::Mat first = b.pictures.next(), second = b.pictures.next();
  cv::Mat firstPart = b.pictures.next(), secondPart = b.pictures.next();
  const cv::Mat oldFirst = firstPart, oldSecond = secondPart;
  const cv::Point origin(b.in.number(), b.in.number());
  const int dx = b.in.number(), dy = b.in.number();
  const bool fromMosaic = b.in.oneIn(2);
  const bool raised = Raises([&] {
    if (fromMosaic) {
      b.engine.TakeOutOverLapImageFromMoasicImage(origin, dx, dy, first, second, firstPart,
                                                  secondPart);
    } else {
      b.engine.TakeOutOverLapImage(origin, dx, dy, first, second, firstPart, secondPart);
    }
  });
  if (raised)
    Require(IsSame(firstPart, oldFirst) && IsSame(secondPart, oldSecond),
            "the pieces stay when the call raises");
}

void Move(Bench& b) {
  const cv::Mat first = b.pictures.next(), second = b.pictures.next();
  Raises([&] {
    const int motion = b.engine.ImageMotionModel(first, second);
    Require(motion >= 0 && motion <= 255, "motion is a number of grey levels");
  });
}

stitchflags Flags(FuzzInput& in) {
  stitchflags flags;
  flags.matchCount = in.number();
  flags.offsetX = in.number();
  flags.offsetY = in.number();
  flags.positionX = in.number();
  flags.positionY = in.number();
  return flags;
}

void Offset(Bench& b) {
  FuzzInput& in = b.in;
  const cv::Mat reference = b.pictures.next(), previous = b.pictures.next(),
                current = b.pictures.next();
  cv::Mat mosaic = b.pictures.next();
  const cv::Mat before = mosaic;
  stitchflags flags = Flags(in);
  cv::Point low(in.number(), in.number()), high(in.number(), in.number());
  const cv::Point oldLow = low, oldHigh = high;
  const int index = in.oneIn(2) ? 0 : in.number();
  const bool raised = Raises([&] {
    b.engine.StitchingImage_offset(index, reference, previous, current, low, high, mosaic, flags);
  });
  if (raised)
    Require(IsSame(mosaic, before) && low == oldLow && high == oldHigh,
            "mosaic and box stay when the call raises");
}

void Blend(Bench& b) {
  FuzzInput& in = b.in;
  cv::Mat mosaic = b.pictures.next();
  const cv::Mat frame = b.pictures.next(), before = mosaic.clone();
  const stitchflags flags = Flags(in);
  const cv::Point low(in.number(), in.number()), high(in.number(), in.number());
  cv::Point newLow(1, 2), newHigh(3, 4), position(5, 6);
  cv::Mat grown, region;
  const bool raised = Raises([&] {
    b.engine.StitchingImage_imageblend(mosaic, frame, flags, low, high, {}, newLow, newHigh,
                                       position, grown, region);
  });
  if (!raised) return;
  Require(grown.empty() && region.empty() && newLow == cv::Point(1, 2) &&
              newHigh == cv::Point(3, 4) && position == cv::Point(5, 6),
          "outputs stay when the call raises");
  Require(mosaic.empty() || mosaic.dims > 2 ||
              cv::norm(mosaic.reshape(1), before.reshape(1), cv::NORM_INF) == 0,
          "the mosaic's pixels stay when the call raises");
}

void Grow(Bench& b) {
  FuzzInput& in = b.in;
  const cv::Mat mosaic = b.pictures.next();
  cv::Mat grown;
  cv::Point position(1, 2), low(3, 4), high(5, 6);
  int rows = in.number(), cols = in.number();
  const int x = in.number(), y = in.number(), frameRows = in.number(), frameCols = in.number();
  // Two thousand million rows of no columns need no memory, only time.
  if (mosaic.empty()) {
    rows %= 1000;
    cols %= 1000;
  }
  const int mosaicCols = in.oneIn(2) ? in.number() : mosaic.cols;
  const int mosaicRows = in.oneIn(2) ? in.number() : mosaic.rows;
  const cv::Point from(in.number(), in.number()), boxLow(in.number(), in.number()),
      boxHigh(in.number(), in.number());
  const bool raised = Raises([&] {
    b.engine.BorderExpand(mosaic, rows, cols, x, y, frameRows, frameCols, mosaicCols, mosaicRows,
                          from, grown, position, boxLow, boxHigh, low, high);
  });
  if (raised)
    Require(grown.empty() && position == cv::Point(1, 2) && low == cv::Point(3, 4) &&
                high == cv::Point(5, 6),
            "outputs stay when the call raises");
}

void Widen(Bench& b) {
  FuzzInput& in = b.in;
  const cv::Point low(in.number(), in.number()), high(in.number(), in.number()),
      position(in.number(), in.number());
  const int rows = in.number(), cols = in.number();
  cv::Point newLow, newHigh;
  b.engine.outputImageCoordate(low, high, 0, 0, rows, cols, position, newLow, newHigh);
}

void Fuse(Bench& b) {
  const cv::Mat old = b.pictures.next(), frame = b.pictures.next();
  cv::Mat fused, weight;
  Raises([&] { b.engine.WeightofTwoAreaFun(old, frame, weight); });
  Raises([&] { b.engine.TwoImageFusion(old, frame, fused); });
}

void CallOnce(Bench& b) {
  using Call = void (*)(Bench&);
  static const Call kCalls[] = {Tune,     Lift,  Corners,  Describe, Match,  Rough, Agree,
                                Register, Judge, TakeOut,  Move,     Offset, Blend, Grow,
                                Widen,    Fuse,  Register, Offset,   Blend,  Fuse};
  kCalls[b.in.u8() % (sizeof kCalls / sizeof *kCalls)](b);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
  cv::setNumThreads(1);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  LimitedMatrices matrices(std::size_t{16} << 20);
  Bench bench{FuzzInput(data, size)};
  Tune(bench);
  for (int n = 0; n < kMostCalls && !bench.in.atEnd(); ++n) CallOnce(bench);
  return 0;
}
