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
    while (m_pages.empty()) {
      if (m_stop.Requested() || (m_complete.empty() && !Look())) return false;
      if (!TakeFile(read)) {
        m_complete.clear();
        m_stop.Sleep(kLookEvery);
      }
    }
    const PictureId picture = m_pages.front();
    m_pages.pop_front();
    frame = SourceFrame();
    frame.name = NameOf(picture);
    frame.number = ++m_number;
    if (read && picture.page < 2) {
      frame.image = m_first;
      frame.why = m_whyNot;
    } else if (read) {
      frame.image = ReadStored(picture, frame.why, m_maxPixels);
    }
    m_first.release();
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
    for (const std::string& path : waiting) {
      const auto before = m_states.find(path);
      // Those after it wait, so that the order is kept.
      if (before == m_states.end() || !(before->second == states[path])) break;
      m_complete.push_back(path);
    }
    m_states = std::move(states);
    return !IsStill() || !m_complete.empty();
  }

  bool IsStill() const {
    return std::chrono::duration<double>(Clock::now() - m_lastNews).count() > m_patience;
  }

  // Takes the next file, if its first picture decodes or nothing has happened for long
  // enough; others may still be in the making, however still they look. The picture is
  // kept, so that it is decoded once.
  bool TakeFile(bool read) {
    if (m_complete.empty()) return false;
    const std::string path = m_complete.front();
    const std::vector<PictureId> pages = ExpandPages({path});
    if (read) {
      m_first = ReadStored(pages.front(), m_whyNot, m_maxPixels);
      if (m_first.empty() && !IsStill()) return false;
    }
    m_complete.pop_front();
    m_taken.insert(path);
    m_pages.assign(pages.begin(), pages.end());
    return true;
  }

  const std::string m_folder;
  const double m_patience;
  const std::vector<std::string> m_leftOut;
  const StopToken& m_stop;
  const std::int64_t m_maxPixels;
  std::set<std::string> m_taken;
  std::map<std::string, State> m_states;  // of those not taken, at the last look
  std::deque<std::string> m_complete;     // not taken, and the same in two looks
  std::deque<PictureId> m_pages;          // of the file taken last, still to be given
  cv::Mat m_first;                        // the first of them, or
  std::string m_whyNot;                   // why it cannot be read
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
