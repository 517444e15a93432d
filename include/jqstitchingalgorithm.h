#ifndef JQSTITCHINGALGORITHM_H
#define JQSTITCHINGALGORITHM_H

#include <cstdint>
#include <memory>
#include <opencv2/core.hpp>
#include <vector>

// A class of the shared library. On Windows the library exports it and a host imports
// it; programs that link the objects themselves define JQ_STITCHING_STATIC.
#if !defined(_WIN32)
#define JQ_STITCHING_EXPORT __attribute__((visibility("default")))
#elif defined(JQ_STITCHING_STATIC)
#define JQ_STITCHING_EXPORT
#elif defined(JQ_STITCHING_BUILD)
#define JQ_STITCHING_EXPORT __declspec(dllexport)
#else
#define JQ_STITCHING_EXPORT __declspec(dllimport)
#endif

namespace jqstitching {
struct EngineAccess;
struct Workspace;

/// Owner of an engine's scratch memory. A copied engine starts with empty
/// scratch, so that two engines never share any.
class JQ_STITCHING_EXPORT WorkspaceHandle {
 public:
  WorkspaceHandle() noexcept;
  WorkspaceHandle(const WorkspaceHandle&) noexcept;
  WorkspaceHandle& operator=(const WorkspaceHandle&) noexcept;
  ~WorkspaceHandle();
  /// The scratch, made on first use.
  Workspace& get();

 private:
  std::unique_ptr<Workspace> m_workspace;
};
}  // namespace jqstitching

/// The record of the last stitch. Lengths are pixels of the working scale (the
/// frame divided by the detection level), x to the right, y downwards.
struct stitchflags {
  std::int32_t matchCount = 0;   ///< match pairs that agree with the offset; 11 are needed
  std::int32_t offsetX = 0;      ///< new frame's column 0 lies at this column of the reference
  std::int32_t offsetY = 0;      ///< new frame's row 0 lies at this row of the reference
  std::int32_t positionX = 0;    ///< mosaic column of the last placed frame's top-left corner
  std::int32_t positionY = 0;    ///< mosaic row of that corner
  std::int32_t overlapFlag = 0;  ///< 1: the new frame is fit to be placed; 0: it is not
};

/// The engine: registration, overlap analysis and blending.
///
/// Concept: a stitch is `StitchingImage_offset` (judge the overlap, measure the
/// shift) followed, for a frame that the caller accepts, by
/// `StitchingImage_imageblend` (grow the mosaic, fuse the frame into it). The
/// other methods are the steps of these two and can be called alone.
///
/// Images: 8-bit `cv::Mat`, 3 channels in blue-green-red order or 1 channel.
/// Grey conversion is `cv::cvtColor` code 7 throughout. A matrix taken by value
/// is a second header on the caller's pixels; where a method writes into such
/// pixels its comment says so. Positions are x = column, y = row.
///
/// Threads: none are started and no locks are taken. One object serves one
/// thread at a time. Results do not depend on `cv::setNumThreads` nor on the
/// vector level in use. `cv::filter2D` and `cv::resize` may round differently on
/// another CPU; their results are taken as they are on the CPU at hand.
///
/// Errors: `cv::Exception` for matrices of more than two dimensions, from the image
/// library, or, for arguments that would otherwise be read out of bounds, with a text
/// of our own; `std::out_of_range` where a method says so; `std::bad_alloc`. Outputs
/// are written last: a method that throws leaves the caller's mosaic, points and lists
/// as they were.
///
/// Ties between equal keys are broken by list order everywhere (stable sorts).
class JQ_STITCHING_EXPORT JQStitchingAlgorithm {
 public:
  // --- state; results depend on nothing else -------------------------------
  std::int32_t m_nDetectLevel;    ///< 1; working-scale divisor, selects the corner scale
  std::int32_t m_nDownScale;      ///< 1; divisor of the image for the corner search, 1 or 2
  std::int32_t m_nCornerBudget;   ///< 8; term of the number of corners kept
  std::int32_t m_nImageCols;      ///< 5000; columns of the frame being registered
  std::int32_t m_nImageRows;      ///< 5000; rows of the frame being registered
  std::int32_t m_nBoundCols;      ///< 20000; not read
  std::int32_t m_nBoundRows;      ///< 20000; not read
  std::int32_t m_nFlagThreshold;  ///< unset until armed: 255 or `m_nFlagPreset`
  std::int32_t m_nFlagPreset;     ///< 5; grey levels, motion test
  float m_fBrightThreshold;       ///< unset until armed: 128 or `m_fBrightPreset`
  float m_fDefinitionThreshold;   ///< unset until armed: 128 or `m_fDefinitionPreset`
  float m_fBrightPreset;          ///< 40; grey levels, overlap test
  float m_fDefinitionPreset;      ///< 15; overlap test
  std::int32_t m_nOverlapMode;    ///< 0: overlap quality; otherwise: motion
  std::int32_t m_nUsePresets;     ///< 1; 0: neutral thresholds (255, 128, 128)
  stitchflags m_stitchFlags;      ///< all 0; the record of the last stitch

  /// Sets the values above; the three active thresholds stay unset until
  /// `StitchingImage_offset` arms them.
  JQStitchingAlgorithm();

  /// Stores the four values. `m_nDownScale` becomes 2 for levels 1 and 2 and 1
  /// otherwise; the corner search applies its own rule (2 below level 3) later.
  void SetParameter(int nDetectLevel, int nCornerBudget, int nOverlapMode, int nUsePresets);

  /// Replaces zero samples, in place: by 1 in a one-channel `source`, by 2 in
  /// the first 3 * cols bytes of each row of any other (so the last quarter of a
  /// four-channel row is not visited). Zero marks empty mosaic elsewhere.
  /// `destination` becomes a header on the same pixels.
  void JudgeImageChannel(cv::Mat source, cv::Mat& destination);

  // --- registration ---------------------------------------------------------
  /// Appends the Harris corners of a `CV_8UC1` image, full-resolution pixels,
  /// by decreasing suppression radius. `corners` should be empty on entry: the
  /// scaling back to full resolution addresses its elements from the front.
  /// Writes `m_nDownScale`. An image of 40 rows or columns or fewer (80 below
  /// level 3) has no corners.
  void FindHarrisCornerCoordianteFun(cv::Mat image, std::vector<cv::Point>& corners);

  /// Replaces `descriptors` by one `CV_16U` row of 25 blocks x 8 orientation
  /// bins per corner. Samples below the last row count as 0; the sample right
  /// of a row's end is the first one of the next row.
  void NoRotaFeatureDescriber(cv::Mat image, std::vector<cv::Point> corners, cv::Mat& descriptors);

  /// Appends, for every row of `second` whose nearest row of `first` is clearly
  /// nearer than the runner-up (squared distances, ratio below 0.98), the pair
  /// (x = row of second, y = row of first).
  void CalacDistanceIndexFun(cv::Mat first, cv::Mat second, std::vector<cv::Point>& pairs);

  /// Appends the corner positions that the pairs name to `matchedFirst` and
  /// `matchedSecond`. `std::out_of_range` for a pair outside the lists.
  void RoughMatchPoint(std::vector<cv::Point> cornersFirst, std::vector<cv::Point> cornersSecond,
                       std::vector<cv::Point> pairs, std::vector<cv::Point>& matchedFirst,
                       std::vector<cv::Point>& matchedSecond);

  /// Finds the translation (first = second + (tx, ty)) of the match with which
  /// most matches agree within 4 pixels; ties go to the earlier match. Appends
  /// the agreeing points. No match: nothing is written. `std::out_of_range` when
  /// `second` is shorter than `first`.
  void RansacMatchPointArrayFun(std::vector<cv::Point> first, std::vector<cv::Point> second,
                                std::vector<cv::Point>& inliersFirst,
                                std::vector<cv::Point>& inliersSecond, float& tx, float& ty);

  /// Measures the shift that carries a point of `second` onto `first`. Always
  /// returns 0; success is judged from `supportCount`. No corners in an image:
  /// the three outputs keep their values. Corners but no match: all become 0.
  int ImageMosaicFun(cv::Mat first, cv::Mat second, int& offsetX, int& offsetY, int& supportCount);

  // --- overlap --------------------------------------------------------------
  /// Per-frame front half of a stitch; see the class comment. On
  /// `frameIndex` 0 the mosaic is replaced by a black canvas of twice the
  /// reference frame with the frame in its middle. The test of a call uses the
  /// offset that `flags` holds on entry; the new frame is registered afterwards.
  /// A level below 1 raises `cv::Exception` before anything changes. A
  /// one-channel `prevImage` or `curImage` is blurred in place by the motion
  /// test at level 1.
  void StitchingImage_offset(int frameIndex, cv::Mat refImage, cv::Mat prevImage, cv::Mat curImage,
                             cv::Point& minPoint, cv::Point& maxPoint, cv::Mat& mosaicImage,
                             stitchflags& flags);

  /// 1 when the offset lies below (`cols`, `rows`) (signed: a negative offset
  /// passes) and both measures lie below their armed thresholds, else 0.
  void CalacOverLapImageFlages(int offsetX, int offsetY, int rows, int cols, cv::Mat first,
                               cv::Mat second, int& flag);

  /// Mean absolute grey difference after halving and blurring.
  void CalacOverLapImageBright(cv::Mat first, cv::Mat second, float& bright);

  /// Difference of the mean strong second-derivative response; NaN when one
  /// picture has no response above 10.
  void CalacOverLapImageDefinition(cv::Mat first, cv::Mat second, float& definition);

  /// Deep copies of the pieces of `first` (frame-sized rectangle at `origin`)
  /// and `second` (the same rectangle moved by (dx, dy)) that overlap. Ranges
  /// outside an image raise the image library's range error.
  void TakeOutOverLapImageFromMoasicImage(cv::Point origin, int dx, int dy, cv::Mat first,
                                          cv::Mat second, cv::Mat& firstPart, cv::Mat& secondPart);

  /// The same for two plain frames; `origin` is not read.
  void TakeOutOverLapImage(cv::Point origin, int dx, int dy, cv::Mat first, cv::Mat second,
                           cv::Mat& firstPart, cv::Mat& secondPart);

  /// Mean absolute grey difference of two blurred frames, 0 to 255, truncated, over
  /// the rows and columns of `second`; `first` may be larger. One-channel inputs come
  /// back blurred. An empty `second` and a smaller `first` raise `cv::Exception`. The
  /// sum is 64 bits wide.
  int ImageMotionModel(cv::Mat first, cv::Mat second);

  // --- blending -------------------------------------------------------------
  /// Places one accepted frame. `mosaic` is written in place when it need not
  /// grow; at level 1 the pixels of `frame` become the fused block, which
  /// `blendRegion` shares. `reserved` is not read. A level below 1 raises
  /// `cv::Exception` before anything changes.
  void StitchingImage_imageblend(cv::Mat mosaic, cv::Mat frame, stitchflags flags,
                                 cv::Point mosaicMin, cv::Point mosaicMax, cv::Point reserved,
                                 cv::Point& newMosaicMin, cv::Point& newMosaicMax,
                                 cv::Point& newPosition, cv::Mat& newMosaic, cv::Mat& blendRegion);

  /// Grows the mosaic by whole frame sizes where a frame at position + offset
  /// touches or crosses an edge, and moves the position and the content box. At
  /// the top-right corner the box's minimum moves by twice the added rows and
  /// its maximum stays: its minimum can come to lie below its maximum.
  void BorderExpand(cv::Mat mosaic, int growRows, int growCols, int offsetX, int offsetY,
                    int frameRows, int frameCols, int mosaicCols, int mosaicRows,
                    cv::Point position, cv::Mat& grown, cv::Point& newPosition, cv::Point boxMin,
                    cv::Point boxMax, cv::Point& newBoxMin, cv::Point& newBoxMax);

  /// Widens the content box by a placed frame, on the side towards which it
  /// sticks out only. The two ints after `boxMax` are not read.
  void outputImageCoordate(cv::Point boxMin, cv::Point boxMax, int ignored1, int ignored2,
                           int frameRows, int frameCols, cv::Point position, cv::Point& newBoxMin,
                           cv::Point& newBoxMax);

  /// Fuses two images of one size and type, 8-bit with 1 or 3 channels. The
  /// result is written into the pixels of `newFrame`, which `fused` then shares.
  void TwoImageFusion(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& fused);

  /// `CV_8UC1` weight of the old content, from the chamfer distances of both
  /// images to their empty pixels. The inputs keep their pixels.
  void WeightofTwoAreaFun(cv::Mat oldBlock, cv::Mat newFrame, cv::Mat& weight);

 private:
  friend struct jqstitching::EngineAccess;
  // Scratch buffers and remembered results. No result depends on it: what is
  // remembered is used only after its source was compared with the image given.
  jqstitching::WorkspaceHandle m_workspace;
};

#endif  // JQSTITCHINGALGORITHM_H
