#include "host/run/push_session.h"

#include <algorithm>
#include <chrono>
#include <opencv2/imgproc.hpp>

#include "host/input_error.h"
#include "host/journal/journal_replay.h"
#include "host/journal/journal_writer.h"
#include "host/output/thumbnail.h"
#include "host/run/guarded_call.h"
#include "host/run/run_picture.h"
#include "host/source/image_record.h"

namespace jqhost {

FrameResult PushSession::Take(const SourceFrame& frame) {
  FrameResult result = TakeUnsettled(frame);
  if (IsUnsettled()) Settle(result);
  return result;
}

FrameResult PushSession::TakeUnsettled(const SourceFrame& frame) {
  FrameResult result;
  result.name = frame.name;
  result.number = frame.number;
  const std::string unfit = frame.image.empty() ? frame.why : WhyNoRecord(frame.image);
  if (!unfit.empty()) {
    SetUnreadable(unfit, result);
  } else if (m_judge && frame.image.size() != m_judge->FrameSize()) {
    // The stitcher does not compare sizes itself.
    SetSizeDiffers(frame.image.size(), m_judge->FrameSize(), result);
  } else {
    Stitch(frame.image, result);
  }
  if (m_thumbnails && !frame.image.empty()) result.thumbnail = Thumbnail(frame.image);
  return result;
}

void PushSession::Stitch(const cv::Mat& image, FrameResult& result) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  if (!m_judge && std::min(image.cols, image.rows) < m_settings.detectLevel) {
    return SetUnreadable(
        "it is too small for --detect-level " + std::to_string(m_settings.detectLevel), result);
  }
  const CallEnd end = CallGuarded([&] {
    _tagJQIMG record = MakeRecord(image);
    m_stitcher.Stitching(&record, m_settings.overlapMode, m_settings.detectLevel,
                         m_settings.cornerBudget);
    if (!m_judge) {
      m_judge.emplace(m_settings, AsTakenIn(image));
      m_judge->JudgeFirst(result);
    } else {
      m_judge->Judge(
          m_stitcher, [image] { return ReduceFrame(image); }, result);
      if (result.cause == Cause::kOverlapTestFailed) CompareWithPicture(image, result);
    }
  });
  if (end.raised) SetFailed(end.what, result);
  m_outOfMemory = m_outOfMemory || end.outOfMemory;
  result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  m_newest = image;
  if (!IsUnsettled()) RecordPlaced(result);
}

void PushSession::Settle(FrameResult& result) {
  m_judge->Settle(result);
  if (m_dropDoubtful && result.Placed() && result.Doubtful()) TakeBack(result);
  RecordPlaced(result);
}

void PushSession::TakeBack(FrameResult& result) {
  bool takenBack = false;
  // Without the memory to take it back it stays, and is told as doubtful.
  CallGuarded([&] { takenBack = m_stitcher.UndoLastFrame(); });
  if (!takenBack) return;
  m_judge->TakeBack();
  result.cause = Cause::kTakenBack;
  result.position = cv::Point();
}

void PushSession::DropDoubtful() {
  m_dropDoubtful = true;
  m_stitcher.SetUndoDepth(1);
}

void PushSession::LimitMemory(std::int64_t bytes) {
  m_mostMemory = bytes;
  m_stitcher.SetMemoryLimit(bytes);
}

void PushSession::Record(JournalWriter& journal, std::function<SampleSummary()> samples) {
  m_journal = &journal;
  m_samples = std::move(samples);
}

void PushSession::RecordPlaced(const FrameResult& result) {
  const cv::Mat image = std::move(m_newest);
  if (m_journal == nullptr || !result.Placed()) return;
  FrameEntry entry;
  entry.size = image.size();
  entry.result = result;
  entry.samples = m_samples();
  if (result.measured.cause == JQFrameCause::kPlaced) {
    entry.mosaic = m_stitcher.GetMosaic().size();
    entry.position = m_stitcher.GetCurrentPosition();
    entry.boxMin = m_stitcher.GetContentMin();
    entry.boxMax = m_stitcher.GetContentMax();
  }
  m_journal->AddFrame(std::move(entry), image);
}

void PushSession::GoOn(const ReplayedRun& run, const FrameEntry& last) {
  const CallEnd end = CallGuarded([&] {
    m_stitcher.RestoreState(run.state);
    m_judge.emplace(m_settings, run.firstFrame);
    if (!run.state.mosaic.empty()) {
      m_judge->GoOn(m_stitcher, run.origin, run.lastFrame, last.result.position);
    }
  });
  if (end.raised) throw InputError("the recorded run cannot be gone on from: " + end.what);
  if (run.continueAt) {
    if (!m_stitcher.ContinueAt(*run.continueAt)) {
      throw InputError("the recorded run went on from a place where there is no picture");
    }
    JudgeFrom(run.origin, *run.continueAt - run.origin);
  }
  // The state has brought its own.
  LimitMemory(m_mostMemory);
  if (m_dropDoubtful) DropDoubtful();
}

// Where enough matches tell the frame's place, it can be compared with what lies there.
void PushSession::CompareWithPicture(const cv::Mat& image, FrameResult& result) const {
  const JQFrameVerdict& measured = result.measured;
  if (!measured.registered || measured.matchCount < JQFrameVerdict::kMatchesNeeded) return;
  const cv::Mat mosaic = m_stitcher.GetMosaic();
  const cv::Rect place(m_stitcher.GetCurrentPosition() + measured.offset, m_judge->WorkingSize());
  const cv::Rect common = place & m_stitcher.GetPlacedBounds();
  if (common.empty()) return;
  cv::Mat frame = AsTakenIn(image);
  if (frame.size() != place.size()) cv::resize(frame, frame, place.size());
  result.appearance = CompareAppearance(mosaic(common), frame(common - place.tl()));
}

bool PushSession::UndoTo(cv::Point origin, cv::Point place) {
  bool undone = false;
  const CallEnd end = CallGuarded([&] { undone = m_stitcher.UndoLastFrame(); });
  if (end.raised || !undone) return false;
  JudgeFrom(origin, place);
  return true;
}

bool PushSession::ContinueAt(cv::Point place) {
  if (!m_judge) return false;
  bool goesOn = false;
  const CallEnd end =
      CallGuarded([&] { goesOn = m_stitcher.ContinueAt(place + m_judge->Origin()); });
  if (end.raised || !goesOn) return false;
  JudgeFrom(m_judge->Origin(), place);
  return true;
}

// The next frame is judged against the block of the picture at this place.
void PushSession::JudgeFrom(cv::Point origin, cv::Point place) {
  const cv::Mat mosaic = m_stitcher.GetMosaic();
  if (mosaic.empty()) {
    const cv::Mat first = m_judge->FirstFrame();
    m_judge.emplace(m_settings, first);
    return;
  }
  cv::Mat block = mosaic(cv::Rect(origin + place, m_judge->WorkingSize())).clone();
  if (block.size() != m_judge->FrameSize()) cv::resize(block, block, m_judge->FrameSize());
  m_judge->GoOn(m_stitcher, origin, block, place);
}

Picture PushSession::PictureSoFar(bool trim) const {
  if (!m_judge) return Picture();
  return OrFirstFrame(TakePicture(m_stitcher, trim), *m_judge);
}

Picture PushSession::FinalPicture(bool trim) const {
  if (!m_judge) return Picture();
  return OrFirstFrame(trim ? TrimPicture(m_stitcher) : TakePicture(m_stitcher, false), *m_judge);
}

void PushSession::Describe(const Picture& picture, RunRecord& record) const {
  if (m_judge) DescribeGeometry(m_stitcher, *m_judge, picture, record);
}

}  // namespace jqhost
