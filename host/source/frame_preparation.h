#ifndef JQHOST_SOURCE_FRAME_PREPARATION_H
#define JQHOST_SOURCE_FRAME_PREPARATION_H

#include <memory>
#include <opencv2/core.hpp>
#include <optional>
#include <string>

#include "host/flat/flat_field.h"
#include "host/source/frame_source.h"
#include "host/source/sample_depth.h"

namespace jqhost {

/// What is done to frames before the stitcher sees them.
struct PreparationSettings {
  int depth = kFindDepth;  ///< significant bits of 16-bit samples
  std::string flat, dark;  ///< pictures of an empty field, without light; may be empty
};

/// Makes frames fit for the stitcher: uneven light corrected, then 8 bits a sample.
/// The depth is that of the first frame with 16-bit samples and stays for the run.
class FramePreparation {
 public:
  /// Raises `InputError` when the flat field or dark frame cannot be used.
  explicit FramePreparation(const PreparationSettings& settings);

  /// The prepared picture: the same pixels when nothing was to be done. Raises
  /// `InputError` when the first frame has not the flat field's size; later ones
  /// pass uncorrected, since a run refuses them for their size.
  cv::Mat Prepare(const cv::Mat& stored);

  /// Goes on where a recorded run ended: as if frames of this size had come, of which this
  /// is known. Raises `InputError` as `Prepare` does.
  void GoOn(const SampleSummary& samples, cv::Size frame);

  /// Whether this picture would come out changed.
  bool Changes(const cv::Mat& stored) const { return m_flat || stored.depth() != CV_8U; }
  const SampleSummary& Summary() const { return m_summary; }
  /// Pixels that the flat field is too dark to correct.
  int UnknownPixels() const { return m_flat ? m_flat->UnknownPixels() : 0; }

 private:
  void CheckFlatSize(cv::Size frame) const;
  void Measure(const cv::Mat& stored);

  int m_askedDepth;
  std::optional<FlatField> m_flat;
  SampleSummary m_summary;
  bool m_any = false;
};

/// A source whose frames come prepared. `preparation` must outlive it.
std::unique_ptr<FrameSource> PrepareFrames(std::unique_ptr<FrameSource> source,
                                           FramePreparation& preparation);

}  // namespace jqhost

#endif  // JQHOST_SOURCE_FRAME_PREPARATION_H
