#include "host/source/follow_source.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <set>
#include <utility>

#include "host/input_error.h"
#include "host/source/path_list.h"
#include "host/source/picture_pages.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

constexpr double kLookEvery = 0.2;  // seconds

class FollowSource : public FrameSource {
 public:
  FollowSource(std::string folder, double seconds, std::vector<std::string> leftOut,
               const StopToken& stop, std::int64_t maxPixels)
      : m_folder(std::move(folder)),
        m_patience(seconds),
        m_leftOut(std::move(leftOut)),
        m_stop(stop),
        m_maxPixels(maxPixels) {}

  bool Next(SourceFrame& frame, bool read) override {
    while (m_ready.empty()) {
      if (m_stop.Requested() || !Look()) return false;
      if (m_ready.empty()) m_stop.Sleep(kLookEvery);
    }
    const PictureId picture = m_ready.front();
    m_ready.pop_front();
    frame = SourceFrame();
    frame.name = NameOf(picture);
    frame.number = ++m_number;
    if (read) frame.image = ReadStored(picture, frame.why, m_maxPixels);
    m_lastNews = Clock::now();
    return true;
  }

  int Total() const override { return 0; }
  bool IsFileList() const override { return false; }
  bool Waits() const override { return true; }

 private:
  using Clock = std::chrono::steady_clock;

  struct State {
    std::uintmax_t size = 0;
    fs::file_time_type time;
    bool operator==(const State& other) const { return size == other.size && time == other.time; }
  };

  // Looks at the folder once; false when it has been still for long enough.
  bool Look() {
    std::vector<std::string> found;
    try {
      found = FindPictures(m_folder, m_leftOut);
    } catch (const InputError&) {
      return false;  // the folder has gone: no more frames will come
    }
    std::vector<std::string> waiting;
    std::map<std::string, State> states;
    for (const std::string& path : found) {
      if (m_taken.count(path) > 0) continue;
      std::error_code error;
      State state;
      state.size = fs::file_size(path, error);
      if (!error) state.time = fs::last_write_time(path, error);
      if (error) continue;  // moved away between the two calls
      waiting.push_back(path);
      states[path] = state;
    }
    if (states != m_states) m_lastNews = Clock::now();
    const bool still =
        std::chrono::duration<double>(Clock::now() - m_lastNews).count() > m_patience;
    for (const std::string& path : waiting) {
      const auto before = m_states.find(path);
      const bool stable = before != m_states.end() && before->second == states[path];
      std::string why;
      // Those after it wait, so that the order is kept.
      if (!stable || (!still && ReadStored({path, 0}, why, m_maxPixels).empty())) break;
      m_taken.insert(path);
      for (const PictureId& page : ExpandPages({path}, m_maxPixels)) m_ready.push_back(page);
    }
    m_states = std::move(states);
    return !still || !m_ready.empty();
  }

  const std::string m_folder;
  const double m_patience;
  const std::vector<std::string> m_leftOut;
  const StopToken& m_stop;
  const std::int64_t m_maxPixels;
  std::set<std::string> m_taken;
  std::map<std::string, State> m_states;  // of those not taken, at the last look
  std::deque<PictureId> m_ready;
  Clock::time_point m_lastNews = Clock::now();
  int m_number = 0;
};

}  // namespace

std::unique_ptr<FrameSource> FollowFolder(const std::string& folder, double seconds,
                                          const std::vector<std::string>& leftOut,
                                          const StopToken& stop, std::int64_t maxPixels) {
  std::error_code error;
  if (!fs::is_directory(folder, error)) {
    throw InputError("cannot follow '" + folder + "': it is not a folder");
  }
  FindPictures(folder, leftOut);  // tells now what would only end the run later
  return std::make_unique<FollowSource>(folder, seconds, leftOut, stop, maxPixels);
}

}  // namespace jqhost
