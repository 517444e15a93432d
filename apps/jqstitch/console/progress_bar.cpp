#include "console/progress_bar.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace jqstitch {
namespace {

constexpr int kBarWidth = 24;
constexpr auto kRedrawEvery = std::chrono::milliseconds(80);
constexpr auto kPlainLineEvery = std::chrono::seconds(5);

int TerminalColumns() {
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

std::string Bar(int done, int total) {
  const auto filled = static_cast<std::size_t>(kBarWidth * std::min(1.0, double(done) / total));
  return "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '-') + "] ";
}

}  // namespace

std::string ProgressText(int done, int total, const std::string& what, double seconds) {
  char text[96];
  std::string line = std::to_string(done);
  if (total > 0) line += "/" + std::to_string(total);
  line += " " + what;
  if (done < 1 || seconds < 0.2) return line;
  const double rate = done / seconds;
  std::snprintf(text, sizeof text, ", %.1f %s/s", rate, what.c_str());
  line += text;
  if (total > done) {
    const long left = std::lround((total - done) / rate);
    std::snprintf(text, sizeof text, ", %ld:%02ld left", left / 60, left % 60);
    line += text;
  }
  return line;
}

void ProgressBar::Start(int total, const std::string& what) {
  m_running = true;
  m_terminal = isatty(STDERR_FILENO) != 0;
  m_total = total;
  m_done = 0;
  m_what = what;
  m_status.clear();
  m_start = Clock::now();
  m_lastDraw = m_start;
  if (m_terminal) Draw();
}

void ProgressBar::Update(int done, const std::string& status) {
  if (!m_running) return;
  m_done = done;
  m_status = status;
  const auto sinceDraw = Clock::now() - m_lastDraw;
  if (m_terminal ? sinceDraw >= kRedrawEvery || done == m_total : sinceDraw >= kPlainLineEvery) {
    Draw();
  }
}

void ProgressBar::End() {
  if (!m_running) return;
  Hide();
  m_running = false;
}

void ProgressBar::Hide() {
  if (!m_drawn) return;
  std::fputs("\r\033[K", stderr);
  m_drawn = false;
}

void ProgressBar::Show() {
  if (m_running && m_terminal) Draw();
}

void ProgressBar::Draw() {
  m_lastDraw = Clock::now();
  const double seconds = std::chrono::duration<double>(m_lastDraw - m_start).count();
  std::string line = ProgressText(m_done, m_total, m_what, seconds);
  if (!m_status.empty()) line = m_status + "; " + line;
  if (!m_terminal) {
    std::fprintf(stderr, "%s\n", line.c_str());
    return;
  }
  const auto columns = static_cast<std::size_t>(std::max(TerminalColumns() - 1, 10));
  if (m_total > 0 && line.size() + kBarWidth + 3 <= columns) line = Bar(m_done, m_total) + line;
  std::fprintf(stderr, "\r\033[K%s", line.substr(0, columns).c_str());
  std::fflush(stderr);
  m_drawn = true;
}

}  // namespace jqstitch
