#include "host/assemble/frame_set.h"

#include <condition_variable>
#include <mutex>
#include <opencv2/imgproc.hpp>

#include "host/assemble/work_pool.h"
#include "host/output/thumbnail.h"
#include "host/source/image_record.h"

namespace jqhost {
namespace {

// Lets pieces of work pass one by one, in their order, whatever order they come in.
class Turnstile {
 public:
  // Waits for the turn of a piece; it ends with this object.
  class Turn {
   public:
    Turn(Turnstile& turnstile, std::size_t piece) : m_turnstile(turnstile), m_piece(piece) {}
    void Wait() {
      std::unique_lock<std::mutex> lock(m_turnstile.m_mutex);
      m_turnstile.m_changed.wait(lock, [this] { return m_turnstile.m_next == m_piece; });
    }
    // A piece that failed before its turn passes as well, or the others would wait forever.
    ~Turn() {
      Wait();
      const std::lock_guard<std::mutex> lock(m_turnstile.m_mutex);
      ++m_turnstile.m_next;
      m_turnstile.m_changed.notify_all();
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

   private:
    Turnstile& m_turnstile;
    std::size_t m_piece;
  };

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::size_t m_next = 0;
};

cv::Mat ReadPrepared(SetFrame& frame, std::size_t number, std::int64_t maxPixels,
                     FramePreparation& preparation, Turnstile& turnstile) {
  Turnstile::Turn turn(turnstile, number);
  const cv::Mat stored = ReadStored(frame.picture, frame.why, maxPixels);
  if (stored.empty()) return cv::Mat();
  frame.size = stored.size();
  frame.why = WhyNoRecord(stored);
  if (!frame.why.empty()) return cv::Mat();
  turn.Wait();
  return preparation.Prepare(stored);
}

}  // namespace

JQStitchingAlgorithm MakeEngine(const FrameSetSettings& settings) {
  JQStitchingAlgorithm engine;
  engine.SetParameter(settings.detectLevel, settings.cornerBudget, 0, 0);
  return engine;
}

cv::Mat AtWorkingScale(const cv::Mat& prepared, int detectLevel) {
  cv::Mat frame = AsTakenIn(prepared);
  if (detectLevel == 1) return frame;
  cv::Mat shrunk;
  cv::resize(frame, shrunk, cv::Size(frame.cols / detectLevel, frame.rows / detectLevel), 0, 0,
             cv::INTER_LINEAR);
  return shrunk;
}

std::vector<SetFrame> ReadFrameSet(const std::vector<PictureId>& pictures,
                                   const FrameSetSettings& settings, FramePreparation& preparation,
                                   const StopToken& stop,
                                   const std::function<void(std::size_t)>& progress) {
  std::vector<SetFrame> frames(pictures.size());
  for (std::size_t i = 0; i < pictures.size(); ++i) frames[i].picture = pictures[i];
  std::vector<JQStitchingAlgorithm> engines(static_cast<std::size_t>(settings.threads),
                                            MakeEngine(settings));
  Turnstile turnstile;
  const auto read = [&](int thread, std::size_t piece) {
    SetFrame& frame = frames[piece];
    const cv::Mat prepared = ReadPrepared(frame, piece, settings.maxPixels, preparation, turnstile);
    if (prepared.empty()) return;
    if (std::min(prepared.cols, prepared.rows) < settings.detectLevel) {
      frame.why = "it is too small for this detection level";
      return;
    }
    const cv::Mat working = AtWorkingScale(prepared, settings.detectLevel);
    frame.features = FindFeatures(engines[static_cast<std::size_t>(thread)], working);
    frame.reduced = ReduceFrame(working);
    if (settings.thumbnails) frame.thumbnail = Thumbnail(prepared);
  };
  ShareWork(settings.threads, frames.size(), stop, read, progress);
  return frames;
}

}  // namespace jqhost
