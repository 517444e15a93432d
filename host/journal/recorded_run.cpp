#include "host/journal/recorded_run.h"

#include <algorithm>
#include <filesystem>

#include "host/input_error.h"
#include "host/output/thumbnail.h"
#include "host/run/push_session.h"
#include "host/source/frame_source.h"
#include "host/verdict/frame_judge.h"

namespace fs = std::filesystem;

namespace jqhost {
namespace {

// "3 of 'run'" for people who ask for a frame that is not there.
std::string Recorded(const JournalSteps& steps, const std::string& folder) {
  const std::vector<JournalStep>& all = steps.Steps();
  if (all.empty()) return "the journal '" + folder + "' holds no frame";
  return "the frames of the journal '" + folder + "' are " + std::to_string(all.front().number) +
         " to " + std::to_string(all.back().number) + ", as their files are called";
}

}  // namespace

RecordedRun::RecordedRun(const std::string& folder, const RecordedPart& part)
    : m_folder(std::make_unique<JournalFolder>(folder, JournalFolder::Use::kWrite)),
      m_log(ReadLog(*m_folder)) {
  JournalSteps& steps = m_log.steps;
  if (!m_log.damage.empty() && (!part.until || steps.Steps().empty())) {
    throw InputError(m_log.damage + (steps.Steps().empty()
                                         ? std::string()
                                         : " (--until " + std::to_string(LastFrame().number) +
                                               " uses what was recorded before it)"));
  }
  if (steps.Steps().empty()) {
    throw InputError("the journal '" + folder + "' holds no frame: the run ended before its first");
  }
  try {
    if (part.until) m_takenOut = steps.KeepUntil(*part.until);
    const std::vector<int> dropped = steps.Drop(part.drop);
    m_takenOut.insert(m_takenOut.end(), dropped.begin(), dropped.end());
  } catch (const InputError& refused) {
    throw InputError(std::string(refused.what()) + "; " + Recorded(steps, folder));
  }
}

const FrameEntry& RecordedRun::LastFrame() const {
  const std::vector<JournalStep>& steps = Steps();
  const auto last = std::find_if(steps.rbegin(), steps.rend(),
                                 [](const JournalStep& step) { return step.frame.has_value(); });
  return *last->frame;
}

bool RecordedRun::IsSource(const std::vector<std::string>& source) const {
  // Cameras and streams do not begin anew.
  const bool files = std::all_of(source.begin(), source.end(), [](const std::string& word) {
    std::error_code error;
    return fs::exists(word, error);
  });
  return files && AbsoluteSource(source) == Header().source;
}

std::optional<std::vector<FrameResult>> RecordedRun::Rebuild(
    PushSession& session, bool thumbnails, const StopToken& stop,
    const std::function<void(int)>& onFrame) {
  std::vector<FrameResult> results;
  const auto run =
      ReplayRun(*m_folder, m_log.steps, [&](const FrameEntry& frame, const cv::Mat& pixels) {
        results.push_back(frame.result);
        CopyVerdict(frame.result.measured, Header().stitch, results.back());
        onFrame(static_cast<int>(results.size()));
        if (thumbnails) results.back().thumbnail = Thumbnail(pixels);
        return !stop.Requested();
      });
  if (!run) return std::nullopt;
  session.GoOn(*run, LastFrame());
  return results;
}

std::unique_ptr<JournalWriter> RecordedRun::Write(const JournalPace& pace, bool keepCut) {
  auto writer =
      std::make_unique<JournalWriter>(std::move(m_folder), pace, m_log.length, m_log.lastNumber);
  if (keepCut) {
    for (const int number : m_takenOut) writer->AddUndo(number);
  }
  return writer;
}

void PassRecorded(FrameSource& source, const FrameEntry& last, int every) {
  SourceFrame frame;
  while (source.Next(frame, false)) {
    if (frame.number < last.result.number) continue;
    if (frame.number > last.result.number ||
        fs::path(frame.name).filename() != fs::path(last.result.name).filename()) {
      break;
    }
    for (int i = 1; i < every && source.Next(frame, false); ++i) continue;
    return;
  }
  throw InputError("the source is not as it was: frame " + std::to_string(last.result.number) +
                   " was '" + last.result.name +
                   "'; name the files that are still to come instead of the whole source");
}

}  // namespace jqhost
