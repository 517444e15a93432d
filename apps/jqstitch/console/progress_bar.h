#ifndef JQSTITCH_CONSOLE_PROGRESS_BAR_H
#define JQSTITCH_CONSOLE_PROGRESS_BAR_H

#include <chrono>
#include <string>

namespace jqstitch {

/// Progress on standard error: a bar that redraws itself on a terminal, else a
/// plain line every few seconds.
class ProgressBar {
 public:
  using Clock = std::chrono::steady_clock;

  void Start(int total, const std::string& what);
  void Update(int done, const std::string& status);
  void End();

  /// Takes the bar off the terminal's line, so that another line can be printed,
  /// and puts it back.
  void Hide();
  void Show();

 private:
  void Draw();

  bool m_running = false;
  bool m_terminal = false;
  bool m_drawn = false;
  int m_total = 0;
  int m_done = 0;
  std::string m_what;
  std::string m_status;
  Clock::time_point m_start;
  Clock::time_point m_lastDraw;
};

/// "12/60 frames, 3.4 frames/s, 0:14 left"; without a total (0) "12 frames,
/// 3.4 frames/s". The rate appears once there is one to tell.
std::string ProgressText(int done, int total, const std::string& what, double seconds);

}  // namespace jqstitch

#endif  // JQSTITCH_CONSOLE_PROGRESS_BAR_H
