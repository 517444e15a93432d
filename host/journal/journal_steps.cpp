#include "host/journal/journal_steps.h"

#include <algorithm>
#include <cstdlib>

#include "host/input_error.h"

namespace jqhost {
namespace {

std::string Numbers(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) text += (text.empty() ? "" : ", ") + std::to_string(number);
  return text;
}

}  // namespace

cv::Size JournalSteps::WorkingSize() const {
  if (m_steps.empty()) return cv::Size();
  const cv::Size full = m_steps.front().frame->size;
  return cv::Size(full.width / m_level, full.height / m_level);
}

void JournalSteps::Take(const JournalEntry& entry) {
  if (const auto* frame = std::get_if<FrameEntry>(&entry)) {
    TakeFrame(*frame);
  } else if (const auto* place = std::get_if<ContinueEntry>(&entry)) {
    TakeContinue(*place);
  } else if (const auto* undo = std::get_if<UndoEntry>(&entry)) {
    Drop({undo->number});
  }
}

void JournalSteps::TakeFrame(const FrameEntry& frame) {
  const cv::Point place = frame.result.position, offset = frame.result.measured.offset;
  if (m_steps.empty()) {
    if (place != cv::Point() || offset != cv::Point() || !frame.mosaic.empty()) {
      throw InputError("it is the first frame, but has a place");
    }
    if (std::min(frame.size.width, frame.size.height) < m_level) {
      throw InputError("its field \"size\" is too small for the scale of the run");
    }
    m_steps.push_back({frame.number, place, frame, 0});
    return;
  }
  const JournalStep& last = m_steps.back();
  const cv::Size size = WorkingSize();
  if (frame.size != m_steps.front().frame->size) {
    throw InputError("its field \"size\" is not that of the first frame");
  }
  // Farther away it has nothing in common with what it was measured against.
  if (std::abs(offset.x) >= size.width || std::abs(offset.y) >= size.height) {
    throw InputError("its field \"offset\" is larger than a frame");
  }
  if (place != last.place + offset) {
    throw InputError("its field \"place\" is not the place before it and the offset");
  }
  m_steps.push_back({frame.number, place, frame, last.number});
}

void JournalSteps::TakeContinue(const ContinueEntry& entry) {
  if (m_steps.empty()) throw InputError("nothing was placed before it");
  m_steps.push_back({entry.number, entry.place, std::nullopt, m_steps.back().number});
}

bool JournalSteps::HangsOnAny(std::size_t step, const std::vector<bool>& gone) const {
  if (m_steps[step].frame) return step > 0 && gone[step - 1];
  const cv::Rect block(m_steps[step].place, WorkingSize());
  for (std::size_t i = 0; i < step; ++i) {
    const cv::Rect other(m_steps[i].place, block.size());
    if (gone[i] && m_steps[i].frame && !(block & other).empty()) return true;
  }
  return false;
}

std::vector<int> JournalSteps::Drop(const std::vector<int>& numbers) {
  if (numbers.empty()) return {};
  std::vector<bool> gone(m_steps.size(), false);
  for (const int number : numbers) {
    const auto found = std::find_if(m_steps.begin(), m_steps.end(),
                                    [number](const JournalStep& s) { return s.number == number; });
    if (found == m_steps.end()) {
      throw InputError("there is no " + std::to_string(number) + " to take out");
    }
    gone[static_cast<std::size_t>(found - m_steps.begin())] = true;
  }
  const std::vector<bool> asked = gone;
  std::vector<int> hanging, taken;
  for (std::size_t i = 0; i < m_steps.size(); ++i) {
    if (!gone[i] && HangsOnAny(i, gone)) {
      gone[i] = true;
      if (m_steps[i].frame) hanging.push_back(m_steps[i].number);
    }
  }
  if (!hanging.empty()) {
    throw InputError("frame" + std::string(numbers.size() > 1 ? "s " : " ") + Numbers(numbers) +
                     " cannot be taken out: " + Numbers(hanging) + " hang" +
                     (hanging.size() > 1 ? "" : "s") + " on " +
                     (numbers.size() > 1 ? "them" : "it"));
  }
  if (gone.front() && std::count(gone.begin(), gone.end(), false) == 0) {
    throw InputError("nothing would be left");
  }
  std::vector<JournalStep> left;
  for (std::size_t i = 0; i < m_steps.size(); ++i) {
    if (gone[i])
      taken.insert(taken.begin(), m_steps[i].number);
    else
      left.push_back(std::move(m_steps[i]));
  }
  m_steps = std::move(left);
  return taken;
}

std::vector<int> JournalSteps::KeepUntil(int number) {
  const auto found = std::find_if(m_steps.begin(), m_steps.end(), [number](const JournalStep& s) {
    return s.number == number && s.frame;
  });
  if (found == m_steps.end()) {
    throw InputError("there is no frame " + std::to_string(number) + " to cut after");
  }
  std::vector<int> taken;
  for (auto step = m_steps.end(); step != found + 1; --step) taken.push_back((step - 1)->number);
  m_steps.erase(found + 1, m_steps.end());
  return taken;
}

}  // namespace jqhost
