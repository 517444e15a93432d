#include "host/source/frame_preparation.h"

#include <utility>

#include "host/input_error.h"

namespace jqhost {
namespace {

std::string Text(cv::Size size) {
  return std::to_string(size.width) + " x " + std::to_string(size.height);
}

class PreparedSource : public FrameSource {
 public:
  PreparedSource(std::unique_ptr<FrameSource> source, FramePreparation& preparation)
      : m_source(std::move(source)), m_preparation(preparation) {}

  bool Next(SourceFrame& frame, bool read) override {
    if (!m_source->Next(frame, read)) return false;
    if (frame.image.empty()) return true;
    frame.why = WhyNotSamples(frame.image);
    frame.image = frame.why.empty() ? m_preparation.Prepare(frame.image) : cv::Mat();
    return true;
  }

  int Total() const override { return m_source->Total(); }
  bool IsFileList() const override { return m_source->IsFileList(); }
  bool Waits() const override { return m_source->Waits(); }
  bool GivesHighBytes() const override { return m_source->GivesHighBytes(); }

 private:
  std::unique_ptr<FrameSource> m_source;
  FramePreparation& m_preparation;
};

}  // namespace

FramePreparation::FramePreparation(const PreparationSettings& settings)
    : m_askedDepth(settings.depth) {
  if (!settings.flat.empty() || !settings.dark.empty()) {
    m_flat.emplace(settings.flat, settings.dark);
  }
}

void FramePreparation::Measure(const cv::Mat& stored) {
  m_summary.grey = (m_summary.grey || !m_any) && stored.channels() == 1;
  if (stored.depth() != CV_16U) return;
  const int largest = LargestSample(stored);
  if (!m_summary.wide) {
    m_summary.wide = true;
    m_summary.found = m_askedDepth == kFindDepth;
    m_summary.bits = m_summary.found ? SmallestDepth(largest) : m_askedDepth;
  }
  if (largest >= 1 << m_summary.bits) ++m_summary.saturatedFrames;
}

void FramePreparation::CheckFlatSize(cv::Size frame) const {
  if (!m_flat || frame == m_flat->Size()) return;
  throw InputError("the first frame has " + Text(frame) + " pixels, the flat field or dark frame " +
                   Text(m_flat->Size()) + "; both must have one size");
}

void FramePreparation::GoOn(const SampleSummary& samples, cv::Size frame) {
  CheckFlatSize(frame);
  m_summary = samples;
  m_any = true;
}

cv::Mat FramePreparation::Prepare(const cv::Mat& stored) {
  if (!m_any) CheckFlatSize(stored.size());
  Measure(stored);
  m_any = true;
  const bool wide = stored.depth() == CV_16U;
  cv::Mat picture = stored;
  if (m_flat && stored.size() == m_flat->Size()) {
    picture = m_flat->Correct(picture, wide ? m_summary.bits : 8);
  }
  return wide ? ScaleToEightBits(picture, m_summary.bits) : picture;
}

std::unique_ptr<FrameSource> PrepareFrames(std::unique_ptr<FrameSource> source,
                                           FramePreparation& preparation) {
  return std::make_unique<PreparedSource>(std::move(source), preparation);
}

}  // namespace jqhost
