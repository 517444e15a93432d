#ifndef JQSCOPE_WORK_SAVE_JOB_H
#define JQSCOPE_WORK_SAVE_JOB_H

#include <QObject>
#include <array>
#include <optional>
#include <string>
#include <thread>

#include "work/run_desk.h"

namespace jqscope {

/// What to save, and how.
struct SaveOrder {
  std::string path;
  bool trim = true;                              ///< to the placed frames
  std::optional<std::array<int, 3>> background;  ///< red, green, blue where nothing is
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
  const SaveOrder& Order() const { return m_order; }

 Q_SIGNALS:
  /// @param path what was written, empty when nothing was; @param problem what to tell
  void done(const QString& path, const QString& problem);

 private:
  void Run(Snapshot snapshot);

  const SaveOrder m_order;
  std::thread m_thread;
};

}  // namespace jqscope

#endif  // JQSCOPE_WORK_SAVE_JOB_H
