#include "work/stitch_thread.h"

#include <exception>
#include <utility>

namespace jqscope {

StitchThread::StitchThread(TilePyramid& tiles) : m_desk(tiles) {
  m_desk.search = [this](const cv::Mat& frame, std::vector<KnownPlace> places) {
    if (m_finder.IsBusy()) return false;
    m_finder.Search(frame, std::move(places), m_desk.Settings().stitch,
                    [this](const std::optional<cv::Point>& place) {
                      if (!place) return;
                      m_inbox.Post([this, at = *place] { m_desk.GoOnAt(at); });
                    });
    return true;
  };
  m_desk.onProgress = [this] { Publish(); };
  m_thread = std::thread([this] { Run(); });
}

StitchThread::~StitchThread() {
  m_inbox.Close();
  m_thread.join();
  m_desk.End(m_end);
}

void StitchThread::Post(std::function<void(RunDesk&)> task) {
  m_inbox.Post([this, task = std::move(task)] { task(m_desk); });
}

void StitchThread::BringWantedTiles() {
  if (m_bringing.exchange(true)) return;
  m_inbox.Post([this] {
    m_bringing = false;
    if (m_desk.PaintWanted()) Q_EMIT tilesCame();
  });
}

RunReport StitchThread::TakeReport() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_told = false;
  return m_newest;
}

void StitchThread::Run() {
  for (;;) {
    // Frames of a camera are shown also while none is stitched; those of files wait.
    const bool live = m_desk.showsLive;
    std::optional<Inbox::Item> item = m_inbox.Next(live || m_desk.WantsFrames());
    if (!item) return;
    try {
      if (item->task) {
        item->task();
      } else {
        m_desk.Take(*item->frame);
      }
    } catch (const std::exception& error) {
      Q_EMIT complained(QString::fromLocal8Bit(error.what()));
    }
    Publish();
  }
}

void StitchThread::Publish() {
  bool tell = false;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_newest = m_desk.Report();
    m_newest.dropped = m_inbox.Dropped();
    tell = !std::exchange(m_told, true);
  }
  if (tell) Q_EMIT reported();
}

}  // namespace jqscope
