#include "work/save_job.h"

#include <exception>

namespace jqscope {

SaveJob::~SaveJob() {
  if (m_thread.joinable()) m_thread.join();
}

void SaveJob::Start(Snapshot snapshot) {
  m_thread = std::thread([this, moved = std::move(snapshot)]() mutable { Run(std::move(moved)); });
}

void SaveJob::Run(Snapshot snapshot) {
  std::string written, problem;
  try {
    if (snapshot.picture.image.empty()) {
      problem = tr("there is no picture yet").toLocal8Bit().toStdString();
    } else {
      const cv::Mat image = jqhost::WithBackground(snapshot.picture.image, m_order.background);
      written = jqhost::SavePictureSomehow(
          m_order.path, snapshot.grey ? jqhost::AsGrey(image, m_order.background) : image, problem);
    }
  } catch (const std::exception& error) {
    problem = error.what();
  }
  Q_EMIT done(QString::fromLocal8Bit(written.c_str()), QString::fromLocal8Bit(problem.c_str()));
}

}  // namespace jqscope
