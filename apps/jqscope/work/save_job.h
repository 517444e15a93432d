#ifndef JQSCOPE_WORK_SAVE_JOB_H
#define JQSCOPE_WORK_SAVE_JOB_H

#include <QObject>
#include <thread>
#include <utility>

#include "host/output/save_options.h"
#include "host/run/stop_token.h"
#include "work/snapshot.h"

namespace jqscope {

/// What to save, and how.
struct SaveOrder {
  jqhost::SaveOptions options;  ///< `grey` is found out
  bool trim = true;             ///< to the placed frames
};

/// Saves one snapshot on a thread of its own, whole or not at all.
class SaveJob : public QObject {
  Q_OBJECT

 public:
  explicit SaveJob(SaveOrder order) : m_order(std::move(order)) {}
  /// Waits for the end of the writing.
  ~SaveJob() override;

  /// To be called once, from any thread.
  void Start(Snapshot snapshot);
  /// The same where there is nothing to save. @param problem why
  void Fail(const QString& problem) { Q_EMIT done(QString(), problem); }
  const SaveOrder& Order() const { return m_order; }
  /// Ends the saving soon; an earlier file of that name stays as it was.
  void Cancel() { m_stop.Request(); }

 Q_SIGNALS:
  /// @param path what was written, empty when nothing was; @param problem what to tell
  void done(const QString& path, const QString& problem);
  /// @param percent of the work that is done, when it has changed
  void progressed(int percent);

 private:
  void Run(Snapshot snapshot);

  const SaveOrder m_order;
  jqhost::StopToken m_stop;
  std::thread m_thread;
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_SAVE_JOB_H
