#include "work/save_job.h"

#include <exception>
#include <utility>

#include "host/output/save_picture.h"

namespace jqscope {

SaveJob::~SaveJob() {
  if (m_thread.joinable()) m_thread.join();
}

void SaveJob::Start(Snapshot snapshot) {
  m_thread = std::thread([this, moved = std::move(snapshot)]() mutable { Run(std::move(moved)); });
}

void SaveJob::Run(Snapshot snapshot) {
  jqhost::SavedPicture saved;
  try {
    if (snapshot.picture.image.empty()) {
      saved.problem = tr("there is no picture yet").toLocal8Bit().toStdString();
    } else {
      jqhost::SaveOptions options = m_order.options;
      options.grey = snapshot.grey;
      int told = -1;
      const auto progress = [&](double share) {
        const int percent = static_cast<int>(100 * share);
        if (percent != std::exchange(told, percent)) Q_EMIT progressed(percent);
      };
      saved = jqhost::SavePictureSomehow(snapshot.picture.image, options, progress, m_stop);
      if (saved.path.empty()) {
        saved.problem = tr("saving was cancelled").toLocal8Bit().toStdString();
      }
    }
  } catch (const std::exception& error) {
    saved.problem = error.what();
  }
  // Whoever hears of the end may write into the pixels again.
  snapshot = Snapshot();
  Q_EMIT done(QString::fromLocal8Bit(saved.path.c_str()),
              QString::fromLocal8Bit(saved.problem.c_str()));
}

}  // namespace jqscope
